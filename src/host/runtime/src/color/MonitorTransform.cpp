// The monitor transform: the display transform that the host program sets, then LittleCMS
// from sRGB to the monitor's ICC profile.
#include "host/MonitorTransform.h"

#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <system_error>
#include <tuple>

#include <lcms2.h>

#include "qzhost/HostControls.h"
#include "qzhost/MonitorProfile.h"

namespace qzhost {

namespace {

struct ProfileCloser {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using ProfilePtr = std::unique_ptr<void, ProfileCloser>;

struct TransformDeleter {
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};
using TransformPtr = std::unique_ptr<void, TransformDeleter>;

struct ContextDeleter {
    void operator()(cmsContext context) const { cmsDeleteContext(context); }
};
using ContextPtr = std::unique_ptr<_cmsContext_struct, ContextDeleter>;

// What LittleCMS said last on this thread, to name the problem in an error.
thread_local std::string tLastCmsError;

void CollectCmsError(cmsContext, cmsUInt32Number, const char* text) {
    tLastCmsError = text != nullptr ? text : "";
}

// A profile file as it is now: the same path with another size or time is another
// profile, so an edited file gets a new transform.
struct ProfileKey {
    std::string path;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    bool operator<(const ProfileKey& other) const {
        return std::tie(path, size, time) < std::tie(other.path, other.size, other.time);
    }
};

class MonitorState {
public:
    static MonitorState& Get() {
        static MonitorState state;
        return state;
    }

    void Set(const std::optional<std::filesystem::path>& path) {
        std::lock_guard lock(mutex_);
        if (!path) {
            current_ = nullptr;
            path_.reset();
            return;
        }
        std::error_code ec;
        const std::filesystem::path absolute = std::filesystem::absolute(*path, ec);
        ProfileKey key{absolute.string(), std::filesystem::file_size(absolute, ec), {}};
        if (ec) {
            throw std::runtime_error("cannot read the monitor profile " + path->string() + ": " +
                                     ec.message());
        }
        key.time = std::filesystem::last_write_time(absolute, ec);
        auto it = cache_.find(key);
        if (it == cache_.end()) {
            it = cache_.emplace(key, MakeTransform(absolute)).first;
        }
        current_ = it->second.get();
        path_ = absolute;
    }

    std::optional<std::filesystem::path> Path() const {
        std::lock_guard lock(mutex_);
        return path_;
    }

    void SetDisplay(std::shared_ptr<const ColourTransform> display) {
        std::lock_guard lock(mutex_);
        display_ = std::move(display);
    }

    std::shared_ptr<const ColourTransform> Display() const {
        std::lock_guard lock(mutex_);
        return display_;
    }

    void Apply(const PF_PixelFloat& in, PF_PixelFloat* out) const {
        std::lock_guard lock(mutex_);
        PF_PixelFloat shown = in;
        if (display_) {
            float rgba[4] = {in.red, in.green, in.blue, in.alpha};
            display_->Apply(rgba, 1);
            shown = {in.alpha, rgba[0], rgba[1], rgba[2]};
        }
        if (current_ != nullptr) {
            const float rgb_in[3] = {shown.red, shown.green, shown.blue};
            float rgb_out[3] = {0.0f, 0.0f, 0.0f};
            cmsDoTransform(current_, rgb_in, rgb_out, 1);
            shown.red = rgb_out[0];
            shown.green = rgb_out[1];
            shown.blue = rgb_out[2];
        }
        *out = shown;
    }

private:
    MonitorState() : context_(cmsCreateContext(nullptr, nullptr)) {
        cmsSetLogErrorHandlerTHR(context_.get(), CollectCmsError);
    }

    TransformPtr MakeTransform(const std::filesystem::path& path) {
        const auto fail = [&](const std::string& problem) {
            std::string message =
                "cannot use the monitor profile " + path.string() + ": " + problem;
            if (!tLastCmsError.empty()) {
                message += " (" + tLastCmsError + ")";
            }
            return std::runtime_error(message);
        };
        tLastCmsError.clear();
        ProfilePtr monitor(cmsOpenProfileFromFileTHR(context_.get(), path.c_str(), "r"));
        if (!monitor) {
            throw fail("not a readable ICC profile");
        }
        if (cmsGetColorSpace(monitor.get()) != cmsSigRgbData) {
            throw fail("not an RGB profile");
        }
        if (!cmsIsIntentSupported(monitor.get(), INTENT_RELATIVE_COLORIMETRIC,
                                  LCMS_USED_AS_OUTPUT)) {
            throw fail("it cannot be the target of a transform");
        }
        // The working space: the built-in sRGB profile.
        ProfilePtr working(cmsCreate_sRGBProfileTHR(context_.get()));
        if (!working) {
            throw fail("the sRGB working space cannot be made");
        }
        TransformPtr transform(cmsCreateTransformTHR(context_.get(), working.get(), TYPE_RGB_FLT,
                                                     monitor.get(), TYPE_RGB_FLT,
                                                     INTENT_RELATIVE_COLORIMETRIC, 0));
        if (!transform) {
            throw fail("no transform from sRGB to it");
        }
        return transform;
    }

    mutable std::mutex mutex_;
    ContextPtr context_;
    std::map<ProfileKey, TransformPtr> cache_;
    void* current_ = nullptr;
    std::optional<std::filesystem::path> path_;
    std::shared_ptr<const ColourTransform> display_;
};

} // namespace

void SetMonitorProfile(const std::optional<std::filesystem::path>& path) {
    MonitorState::Get().Set(path);
}

std::optional<std::filesystem::path> MonitorProfile() {
    return MonitorState::Get().Path();
}

void SetMonitorDisplay(std::shared_ptr<const ColourTransform> display) {
    MonitorState::Get().SetDisplay(std::move(display));
}

std::shared_ptr<const ColourTransform> MonitorDisplay() {
    return MonitorState::Get().Display();
}

} // namespace qzhost

void TransformPixelAtScreenLocation(const PF_PixelFloat& in, int /*x*/, int /*y*/,
                                    PF_PixelFloat* out) {
    qzhost::RequireUIThread("TransformPixelAtScreenLocation");
    if (out == nullptr) {
        return;
    }
    // The reference host has one monitor under every screen point.
    qzhost::MonitorState::Get().Apply(in, out);
}
