// Settings of the host's UI toolkit and drawing library that a test or a host script may
// change. Main-thread state.
#pragma once

#include "qzgp/QZ_Basic.h"

namespace qzhost {

class QZ_HOST_API ToolkitSettings {
public:
    /// The toolkit settings of this process.
    static ToolkitSettings& Get();

    /// Back to the defaults: fills with brushes, text antialiased.
    void Reset() noexcept;

    /// What the drawing supplier answers when asked whether fills are to be made with
    /// shaders (false: with brushes).
    void SetShaderFills(bool on) noexcept { shaderFills_ = on; }
    bool ShaderFills() const noexcept { return shaderFills_; }

    /// Whether text is drawn with antialiasing (off gives pure two-colour glyphs).
    void SetTextAntialiasing(bool on) noexcept { textAntialiasing_ = on; }
    bool TextAntialiasing() const noexcept { return textAntialiasing_; }

private:
    ToolkitSettings() = default;
    bool shaderFills_ = false;
    bool textAntialiasing_ = true;
};

} // namespace qzhost
