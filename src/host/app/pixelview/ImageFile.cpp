// Loads the image reader module the first time an image is opened, from the program's
// own folder (the build and the installation keep it beside the programs), and opens
// images through its entry. The module stays loaded until the process ends: the image
// files that it made, and the exceptions that it threw, use its code.
#include <dlfcn.h>

#include <mutex>
#include <string>

#include "pixelview/ImageFile.h"
#include "pixelview/PixelViewError.h"

namespace qzhost::pixelview {

namespace {

using OpenEntry = ImageFile* (*)(const std::string&);

OpenEntry LoadModule() {
    // Found through the program's run path ($ORIGIN), as the host runtime is.
    void* module = ::dlopen(QZ_IMAGEIO_MODULE, RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        const char* why = ::dlerror();
        throw HostFailed(
            std::string("the image reader module " QZ_IMAGEIO_MODULE " cannot be loaded: ") +
            (why != nullptr ? why : "unknown error"));
    }
    void* entry = ::dlsym(module, "QZHostImageIO_OpenImageFile");
    if (entry == nullptr) {
        throw HostFailed("the image reader module " QZ_IMAGEIO_MODULE
                         " has no entry QZHostImageIO_OpenImageFile");
    }
    return reinterpret_cast<OpenEntry>(entry);
}

} // namespace

std::unique_ptr<ImageFile> OpenImageFile(const std::string& path) {
    static std::mutex mutex;
    static OpenEntry entry = nullptr;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (entry == nullptr) {
            entry = LoadModule();
        }
    }
    return std::unique_ptr<ImageFile>(entry(path));
}

} // namespace qzhost::pixelview
