// The checks of an `inspect` request made before the host starts.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include <stdlib.h>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewRequest.h"

namespace qzhost::pixelview {
namespace {

PixelViewOptions AtOnePoint() {
    PixelViewOptions options;
    options.at = {"3,4"};
    return options;
}

/// The OCIO environment variable set to a value (unset for none) while the object lives,
/// then put back as it was.
class OcioVariable {
public:
    explicit OcioVariable(const std::optional<std::string>& value) {
        if (const char* was = ::getenv("OCIO")) {
            was_ = was;
        }
        Put(value);
    }
    ~OcioVariable() { Put(was_); }
    OcioVariable(const OcioVariable&) = delete;
    OcioVariable& operator=(const OcioVariable&) = delete;

private:
    static void Put(const std::optional<std::string>& value) {
        if (value) {
            ::setenv("OCIO", value->c_str(), 1);
        } else {
            ::unsetenv("OCIO");
        }
    }
    std::optional<std::string> was_;
};

/// The message of the refusal of `options`; empty when they are taken.
std::string Refusal(const PixelViewOptions& options) {
    try {
        CheckPixelViewOptions(options);
    } catch (const BadRequest& error) {
        return error.what();
    }
    return {};
}

TEST(PixelViewRequest, ReadsThePointsTheOriginAndTheNotation) {
    PixelViewOptions options = AtOnePoint();
    options.at.push_back("-");
    options.origin = "1,2";
    options.mode = "HSB";
    options.locale = "sr_Latn_RS@calendar=gregorian";
    const PixelViewRequest request = CheckPixelViewOptions(options);
    ASSERT_EQ(request.sources.size(), 2u);
    EXPECT_FALSE(request.sources[0].fromInput);
    EXPECT_EQ(request.sources[0].at.y, 4);
    EXPECT_TRUE(request.sources[1].fromInput);
    ASSERT_TRUE(request.origin.has_value());
    EXPECT_EQ(request.origin->x, 1);
    ASSERT_NE(request.mode, nullptr);
    EXPECT_EQ(request.mode->name, "hsb");
}

TEST(PixelViewRequest, RefusesStandardInputTwiceAndNoPoint) {
    PixelViewOptions twice = AtOnePoint();
    twice.at = {"-", "-"};
    EXPECT_THROW(CheckPixelViewOptions(twice), BadRequest);
    PixelViewOptions none = AtOnePoint();
    none.at.clear();
    EXPECT_THROW(CheckPixelViewOptions(none), BadRequest);
}

TEST(PixelViewRequest, RefusesALocaleLongerThanALocaleIdCanBe) {
    PixelViewOptions options = AtOnePoint();
    // Long enough to overflow the stack of the pattern match, were it run on it.
    options.locale = "en_US@" + std::string(200000, 'a');
    try {
        CheckPixelViewOptions(options);
        FAIL() << "no refusal";
    } catch (const BadRequest& error) {
        EXPECT_NE(std::string(error.what()).find("at most 156 characters"), std::string::npos)
            << error.what();
    }
    options.locale = "en_US@" + std::string(150, 'a');
    EXPECT_NO_THROW(CheckPixelViewOptions(options));
}

TEST(PixelViewRequest, TheConfigIsOcioElseTheOcioVariablesElseNone) {
    PixelViewOptions options = AtOnePoint();
    {
        const OcioVariable unset(std::nullopt);
        EXPECT_EQ(CheckPixelViewOptions(options).config, "");
    }
    {
        // An empty variable names no config, as for every program that reads it.
        const OcioVariable empty(std::string{});
        EXPECT_EQ(CheckPixelViewOptions(options).config, "");
    }
    const OcioVariable named(std::string("/configs/from-the-variable.ocio"));
    EXPECT_EQ(CheckPixelViewOptions(options).config, "/configs/from-the-variable.ocio");
    options.ocio = "/configs/given.ocio";
    EXPECT_EQ(CheckPixelViewOptions(options).config, "/configs/given.ocio");
}

TEST(PixelViewRequest, WithoutAConfigEachColourOptionIsRefused) {
    const OcioVariable unset(std::nullopt);
    const std::pair<const char*, void (*)(PixelViewOptions&)> cases[] = {
        {"--display", [](PixelViewOptions& o) { o.display = "Test Monitor"; }},
        {"--view", [](PixelViewOptions& o) { o.view = "Raw"; }},
        {"--exposure", [](PixelViewOptions& o) { o.exposure = 0.0; }},
        {"--gamma", [](PixelViewOptions& o) { o.gamma = 1.0; }},
        {"--colorspace", [](PixelViewOptions& o) { o.colorspace = "linear"; }},
    };
    for (const auto& [option, give] : cases) {
        PixelViewOptions options = AtOnePoint();
        give(options);
        const std::string refusal = Refusal(options);
        EXPECT_EQ(refusal.rfind(std::string(option) + " needs an OpenColorIO config", 0), 0u)
            << option << ": " << refusal;
        // With a config the same option is taken.
        options.ocio = "/configs/any.ocio";
        EXPECT_EQ(Refusal(options), "") << option;
    }
}

TEST(PixelViewRequest, AMonitorProfileIsRefusedBesideAConfigFromEitherPlace) {
    PixelViewOptions options = AtOnePoint();
    options.monitor = "/profiles/monitor.icc";
    options.ocio = "/configs/given.ocio";
    EXPECT_NE(Refusal(options).find("--monitor cannot be used with an OpenColorIO config"),
              std::string::npos)
        << Refusal(options);
    options.ocio.clear();
    const OcioVariable named(std::string("/configs/from-the-variable.ocio"));
    const std::string refusal = Refusal(options);
    EXPECT_NE(refusal.find("--monitor"), std::string::npos) << refusal;
    EXPECT_NE(refusal.find("the OCIO environment variable names"), std::string::npos) << refusal;
}

TEST(PixelViewRequest, TheGammaLiesFromATenthToTenAndTheExposureIsFinite) {
    PixelViewOptions options = AtOnePoint();
    options.ocio = "/configs/given.ocio";
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInf = std::numeric_limits<double>::infinity();
    for (const double gamma : {0.1, 1.0, 2.2, 10.0}) {
        options.gamma = gamma;
        EXPECT_EQ(Refusal(options), "") << gamma;
    }
    for (const double gamma : {0.0999, 10.001, 0.0, -2.2, kNan, kInf}) {
        options.gamma = gamma;
        EXPECT_EQ(Refusal(options).rfind("--gamma must be a number from 0.1 to 10, not ", 0), 0u)
            << gamma << ": " << Refusal(options);
    }
    options.gamma.reset();
    for (const double exposure : {-12.5, 0.0, 3.0}) {
        options.exposure = exposure;
        EXPECT_EQ(Refusal(options), "") << exposure;
    }
    for (const double exposure : {kNan, kInf, -kInf}) {
        options.exposure = exposure;
        EXPECT_EQ(Refusal(options).rfind("--exposure must be a finite number of stops", 0), 0u)
            << exposure << ": " << Refusal(options);
    }
}

} // namespace
} // namespace qzhost::pixelview
