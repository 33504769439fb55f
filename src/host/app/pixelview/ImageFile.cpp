// Loads the image reader module the first time an image is opened, from the folder of the
// program that holds this code (the build and the installation keep it beside the
// programs), and opens images through its entry. The module stays loaded until the
// process ends: the image files that it made, and the exceptions that it threw, use its
// code.
#include <dlfcn.h>

#include <filesystem>
#include <mutex>
#include <string>

#include "pixelview/ImageFile.h"
#include "pixelview/PixelViewError.h"

namespace qzhost::pixelview {

namespace {

using OpenEntry = ImageFile* (*)(const std::string&);

/// The folder of the program (or library) whose code this is: dladdr names the file of
/// the object that holds an address.
std::string OwnFolder() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void*>(&OwnFolder), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    return std::filesystem::path(info.dli_fname).parent_path().string();
}

OpenEntry LoadModule() {
    // Loaded by its full name beside the program: a file name alone would be looked up in
    // the run path of the caller of dlopen, which under a sanitizer is the sanitizer's
    // own library.
    const std::string folder = OwnFolder();
    const std::string path = folder.empty() ? QZ_IMAGEIO_MODULE : folder + "/" QZ_IMAGEIO_MODULE;
    void* module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
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
