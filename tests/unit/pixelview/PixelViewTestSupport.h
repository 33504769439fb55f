// What the inspect tests share: a private folder per test, images written with
// OpenImageIO, and runs of the qzhost program with their exit status and output.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace pixelviewtest {

/// A new, empty folder under the temporary folder, removed with the object.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    const std::filesystem::path& Path() const noexcept { return path_; }
    std::string File(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

/// Writes an image of `width` by `height` pixels with `channels` channels, the channel
/// values row by row (`values` holds width × height × channels numbers, converted to
/// the file's `type`: "uint8", "uint16", "uint10" (10-bit values in 16-bit words, for
/// DPX), "half" or "float"). Fails the test on error.
void WriteImage(const std::string& path, int width, int height, int channels,
                const std::string& type, const std::vector<double>& values);

struct ProgramRun {
    int status = -1;
    std::string out;
    std::string err;
};

/// Runs the qzhost program with `arguments` (already quoted for the shell), feeding it
/// `input` on standard input. The user's configuration folder (XDG_CONFIG_HOME) is
/// `config_home`, or a new empty folder: no test touches the real user's preferences.
ProgramRun Qzhost(const std::string& arguments, const std::string& input = "",
                  const std::string& config_home = "");

/// `text` quoted for the shell.
std::string Quoted(const std::string& text);

/// The lines of `text`.
std::vector<std::string> Lines(const std::string& text);

/// The JSON objects of `text`, one per line.
std::vector<nlohmann::json> JsonLines(const std::string& text);

/// The text of control `id` in a snapshot.
std::string ControlText(const nlohmann::json& snapshot, int id);

/// The bundled sample folder of the source tree.
std::string SampleFile(const std::string& name);

} // namespace pixelviewtest
