#include "PixelViewTestSupport.h"
#include "BuildPaths.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <sstream>

#include <OpenImageIO/imageio.h>

namespace pixelviewtest {

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const fs::path candidate =
            fs::temp_directory_path() /
            ("qzpixelview-" + std::to_string(::getpid()) + "-" + std::to_string(random()));
        std::error_code error;
        if (fs::create_directory(candidate, error)) {
            path_ = candidate;
            return;
        }
    }
    ADD_FAILURE() << "cannot make a temporary folder";
}

TempFolder::~TempFolder() {
    std::error_code error;
    fs::remove_all(path_, error);
}

void WriteImage(const std::string& path, int width, int height, int channels,
                const std::string& type, const std::vector<double>& values) {
    ASSERT_EQ(values.size(), static_cast<std::size_t>(width * height * channels));
    const bool ten_bits = type == "uint10";
    OIIO::TypeDesc format = type == "uint8"                ? OIIO::TypeDesc::UINT8
                            : type == "uint16" || ten_bits ? OIIO::TypeDesc::UINT16
                            : type == "half"               ? OIIO::TypeDesc::HALF
                                                           : OIIO::TypeDesc::FLOAT;
    OIIO::ImageSpec header(width, height, channels, format);
    if (ten_bits) {
        header.attribute("oiio:BitsPerSample", 10);
    }
    if (channels == 4) {
        header.alpha_channel = 3;
    } else if (channels == 2) {
        header.alpha_channel = 1;
    }
    // The values are the file's: colour is not divided by alpha on the way out.
    header.attribute("oiio:UnassociatedAlpha", 1);
    // Integer values are given as stored (0-255, 0-65535); they are passed as such.
    std::vector<float> data;
    for (const double v : values) {
        // 10-bit values go to the writer as the 16-bit words that hold them.
        data.push_back(static_cast<float>(ten_bits ? std::round(v * 65535.0 / 1023.0) : v));
    }
    auto out = OIIO::ImageOutput::create(path);
    ASSERT_TRUE(out) << OIIO::geterror();
    ASSERT_TRUE(out->open(path, header)) << out->geterror();
    bool written = false;
    if (type == "uint8" || type == "uint16" || ten_bits) {
        std::vector<std::uint16_t> words(data.begin(), data.end());
        if (type == "uint8") {
            std::vector<std::uint8_t> bytes(data.begin(), data.end());
            written = out->write_image(OIIO::TypeDesc::UINT8, bytes.data());
        } else {
            written = out->write_image(OIIO::TypeDesc::UINT16, words.data());
        }
    } else {
        written = out->write_image(OIIO::TypeDesc::FLOAT, data.data());
    }
    ASSERT_TRUE(written) << out->geterror();
    ASSERT_TRUE(out->close()) << out->geterror();
}

namespace {

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

std::string LeakCheckOptions() {
    // Under the leak checker, the suppressions that it used would be listed on standard
    // error after the program's own lines; the tests count those lines.
    const char* given = std::getenv("LSAN_OPTIONS");
    return std::string(given != nullptr ? given : "") + ":print_suppressions=0";
}

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted + "'";
}

ProgramRun Qzhost(const std::string& arguments, const std::string& input,
                  const std::string& config_home, const std::string& ocio) {
    ProgramRun run;
#ifdef QZ_QZHOST_PROGRAM
    TempFolder io;
    const fs::path in = io.Path() / "in";
    const fs::path out = io.Path() / "out";
    const fs::path err = io.Path() / "err";
    const fs::path config = config_home.empty() ? io.Path() / "config" : fs::path(config_home);
    std::ofstream(in, std::ios::binary) << input;
    const std::string colour = ocio.empty() ? "env -u OCIO " : "OCIO=" + Quoted(ocio) + " ";
    const std::string command = colour + "XDG_CONFIG_HOME=" + Quoted(config.string()) +
                                " LSAN_OPTIONS=" + Quoted(LeakCheckOptions()) + " " +
                                Quoted(QZ_QZHOST_PROGRAM) + " " + arguments + " <" +
                                Quoted(in.string()) + " >" + Quoted(out.string()) + " 2>" +
                                Quoted(err.string());
    const int status = std::system(command.c_str());
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = ReadFile(out);
    run.err = ReadFile(err);
#else
    (void)arguments;
    (void)input;
    (void)config_home;
    (void)ocio;
    ADD_FAILURE() << "this build has no qzhost program";
#endif
    return run;
}

namespace {

using Clock = std::chrono::steady_clock;

double SecondsLeft(Clock::time_point end) {
    return std::chrono::duration<double>(end - Clock::now()).count();
}

} // namespace

QzhostChild::QzhostChild(const std::vector<std::string>& arguments) {
#ifdef QZ_QZHOST_PROGRAM
    int in[2];
    int out[2];
    int err[2];
    if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0 ||
        ::pipe2(err, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "cannot make pipes: " << std::strerror(errno);
        return;
    }
    std::vector<std::string> argv_text = {QZ_QZHOST_PROGRAM};
    argv_text.insert(argv_text.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& argument : argv_text) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    const std::string config = config_.Path().string();
    const std::string leak_options = LeakCheckOptions();
    pid_ = ::fork();
    if (pid_ == 0) {
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        ::dup2(err[1], STDERR_FILENO);
        ::setenv("XDG_CONFIG_HOME", config.c_str(), 1);
        ::setenv("LSAN_OPTIONS", leak_options.c_str(), 1);
        ::unsetenv("NO_COLOR");
        ::unsetenv("OCIO");
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    ::close(err[1]);
    in_ = in[1];
    out_ = out[0];
    err_ = err[0];
    if (pid_ < 0) {
        ADD_FAILURE() << "cannot start qzhost: " << std::strerror(errno);
    }
    // A write to a program that has ended fails rather than ending the test.
    ::signal(SIGPIPE, SIG_IGN);
#else
    (void)arguments;
    ADD_FAILURE() << "this build has no qzhost program";
#endif
}

QzhostChild::~QzhostChild() {
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    for (const int fd : {in_, out_, err_}) {
        if (fd >= 0) {
            ::close(fd);
        }
    }
}

void QzhostChild::Write(const std::string& text) {
    std::size_t done = 0;
    while (in_ >= 0 && done < text.size()) {
        const ssize_t written = ::write(in_, text.data() + done, text.size() - done);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            ADD_FAILURE() << "cannot write to qzhost: " << std::strerror(errno);
            return;
        }
        done += static_cast<std::size_t>(written);
    }
}

void QzhostChild::CloseInput() {
    if (in_ >= 0) {
        ::close(in_);
        in_ = -1;
    }
}

bool QzhostChild::Fill(double seconds) {
    if (outEnded_ || out_ < 0) {
        return false;
    }
    pollfd wanted = {out_, POLLIN, 0};
    const int timeout = static_cast<int>(std::max(0.0, seconds) * 1000);
    if (::poll(&wanted, 1, timeout) <= 0) {
        return false;
    }
    char buffer[65536];
    const ssize_t got = ::read(out_, buffer, sizeof buffer);
    if (got <= 0) {
        outEnded_ = true;
        return false;
    }
    pending_.append(buffer, static_cast<std::size_t>(got));
    return true;
}

std::string QzhostChild::ReadLines(std::size_t count, double seconds) {
    const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                     std::chrono::duration<double>(seconds));
    for (;;) {
        std::size_t at = 0;
        std::size_t lines = 0;
        while (lines < count) {
            const std::size_t newline = pending_.find('\n', at);
            if (newline == std::string::npos) {
                break;
            }
            ++lines;
            at = newline + 1;
        }
        if (lines == count) {
            std::string taken = pending_.substr(0, at);
            pending_.erase(0, at);
            return taken;
        }
        if (!Fill(SecondsLeft(end))) {
            return {};
        }
    }
}

std::string QzhostChild::ReadPanel(double seconds) {
    const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                     std::chrono::duration<double>(seconds));
    for (;;) {
        const std::size_t blank = pending_.rfind('\n', 0) == 0 ? 0 : pending_.find("\n\n");
        if (blank != std::string::npos) {
            const std::size_t taken_end = blank == 0 ? 1 : blank + 2;
            std::string taken = pending_.substr(0, taken_end);
            pending_.erase(0, taken_end);
            return taken;
        }
        if (!Fill(SecondsLeft(end))) {
            return {};
        }
    }
}

void QzhostChild::Drain(int fd, std::string& into) {
    char buffer[65536];
    for (;;) {
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return;
        }
        into.append(buffer, static_cast<std::size_t>(got));
    }
}

int QzhostChild::Wait(double seconds) {
    if (pid_ <= 0) {
        return -1;
    }
    const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                     std::chrono::duration<double>(seconds));
    for (;;) {
        int status = 0;
        const pid_t done = ::waitpid(pid_, &status, WNOHANG);
        if (done == pid_) {
            pid_ = -1;
            if (!outEnded_ && out_ >= 0) {
                Drain(out_, pending_);
                outEnded_ = true;
            }
            if (err_ >= 0) {
                Drain(err_, errors_);
            }
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        }
        if (SecondsLeft(end) <= 0) {
            return -1;
        }
        // Output that the program writes while it ends must not fill a pipe and stop it.
        if (!outEnded_ && out_ >= 0) {
            pollfd ready[2] = {{out_, POLLIN, 0}, {err_, POLLIN, 0}};
            if (::poll(ready, 2, 10) > 0) {
                char buffer[65536];
                if ((ready[0].revents & (POLLIN | POLLHUP)) != 0) {
                    const ssize_t got = ::read(out_, buffer, sizeof buffer);
                    if (got > 0) {
                        pending_.append(buffer, static_cast<std::size_t>(got));
                    } else {
                        outEnded_ = true;
                    }
                }
                if ((ready[1].revents & (POLLIN | POLLHUP)) != 0) {
                    const ssize_t got = ::read(err_, buffer, sizeof buffer);
                    if (got > 0) {
                        errors_.append(buffer, static_cast<std::size_t>(got));
                    }
                }
            }
        } else {
            ::usleep(10000);
        }
    }
}

std::string QzhostChild::RestOfOutput() {
    std::string rest;
    rest.swap(pending_);
    return rest;
}

std::string QzhostChild::Errors() {
    return errors_;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<nlohmann::json> JsonLines(const std::string& text) {
    std::vector<nlohmann::json> objects;
    for (const std::string& line : Lines(text)) {
        objects.push_back(nlohmann::json::parse(line));
    }
    return objects;
}

std::string ControlText(const nlohmann::json& snapshot, int id) {
    for (const auto& control : snapshot.at("controls")) {
        if (control.at("id") == id) {
            return control.value("text", std::string());
        }
    }
    ADD_FAILURE() << "no control " << id;
    return {};
}

std::string SampleFile(const std::string& name) {
    return (fs::path(QZ_SOURCE_DIR) / "samples" / name).string();
}

} // namespace pixelviewtest
