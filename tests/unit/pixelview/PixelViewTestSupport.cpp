#include "PixelViewTestSupport.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
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
                  const std::string& config_home) {
    ProgramRun run;
#ifdef QZ_QZHOST_PROGRAM
    TempFolder io;
    const fs::path in = io.Path() / "in";
    const fs::path out = io.Path() / "out";
    const fs::path err = io.Path() / "err";
    const fs::path config = config_home.empty() ? io.Path() / "config" : fs::path(config_home);
    std::ofstream(in, std::ios::binary) << input;
    const std::string command = "XDG_CONFIG_HOME=" + Quoted(config.string()) + " " +
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
    ADD_FAILURE() << "this build has no qzhost program";
#endif
    return run;
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
