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
/// `config_home`, or a new empty folder: no test touches the real user's preferences. The
/// OCIO environment variable names `ocio`, and is unset when that is empty: no test takes
/// the colour config of the environment that runs it.
ProgramRun Qzhost(const std::string& arguments, const std::string& input = "",
                  const std::string& config_home = "", const std::string& ocio = "");

/// The qzhost program running with pipes on its standard input, output and error, for
/// tests that talk to it a line at a time. The user's configuration folder is a new
/// empty one; the OCIO environment variable is unset. The program is killed if it still runs when
/// the object goes.
class QzhostChild {
public:
    explicit QzhostChild(const std::vector<std::string>& arguments);
    ~QzhostChild();
    QzhostChild(const QzhostChild&) = delete;
    QzhostChild& operator=(const QzhostChild&) = delete;

    /// Writes `text` to the program's standard input.
    void Write(const std::string& text);
    /// Closes the program's standard input.
    void CloseInput();
    /// Reads standard output until it holds `count` lines more than were taken before, or
    /// until `seconds` pass, or the output ends; returns those lines (each with its
    /// '\n') and keeps what follows for later.
    std::string ReadLines(std::size_t count, double seconds);
    /// Reads standard output until it holds an empty line (the end of a text panel), as
    /// ReadLines; returns the text up to and including the empty line.
    std::string ReadPanel(double seconds);
    /// Waits up to `seconds` for the program to end; its exit status, or -1 when it did
    /// not end in time (or ended by a signal).
    int Wait(double seconds);
    /// Everything that the program wrote to standard output, not taken yet, and to
    /// standard error, once it has ended.
    std::string RestOfOutput();
    std::string Errors();

private:
    /// Reads what is there on standard output into `pending_`, waiting up to `seconds`
    /// for something to come; false when nothing came.
    bool Fill(double seconds);
    void Drain(int fd, std::string& into);

    TempFolder config_;
    int pid_ = -1;
    int in_ = -1;
    int out_ = -1;
    int err_ = -1;
    std::string pending_;
    std::string errors_;
    bool outEnded_ = false;
};

/// The leak checker's options for a run of the program: the tests' own, with the list of
/// the suppressions used left off standard error.
std::string LeakCheckOptions();

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
