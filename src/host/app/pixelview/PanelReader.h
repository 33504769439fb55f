// Reads what the Info panel shows from the running host, as the host script's "snapshot"
// op sees it: the panel through the docking workspace, its own state through its
// description of itself, its controls through the panel's control container.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "kitui/ui/UI_Node.h"
#include "pixelview/PanelState.h"

namespace qzhost::pixelview {

class PanelReader {
public:
    /// Fills `state` with what the panel shows now (on the host's main thread). The
    /// storage of `state` is reused: read into the same state point after point.
    void Read(PanelState& state);

private:
    /// What the reader needs of the class of a child of the panel's control container:
    /// whether it is a control view (what the container's control lookup checks), its
    /// class name, and whether it is a static text. All are properties of the class,
    /// worked out (by checked casts, from the type's name) once per class met in the
    /// run, not once per control per point.
    struct ControlClass {
        const std::type_info* type = nullptr;
        bool isControl = false;
        std::string name;
        bool isText = false;
    };
    const ControlClass& ClassOf(const kitui::ui::UI_Node& child);

    /// A panel has controls of a handful of classes: they are looked up in order. Each
    /// entry has storage of its own, so that the names that states point to stay put.
    std::vector<std::unique_ptr<ControlClass>> classes_;
};

/// `utf16` as UTF-8 in `out` (its storage reused), each lone surrogate as U+FFFD, as the
/// host's own conversion gives it.
void AssignUtf8(std::u16string_view utf16, std::string& out);

} // namespace qzhost::pixelview
