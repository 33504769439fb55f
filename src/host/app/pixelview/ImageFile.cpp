// Loads the image reader module the first time an image is opened, from the running
// program's folder (the build and the installation keep it beside the programs), and
// opens images and lists the formats it reads through its two entries. The module stays loaded
// until the process ends: the image files that it made, and the exceptions that it threw, use its
// code.
#include <dlfcn.h>

#include <string>
#include <vector>

#include "pixelview/ImageFile.h"
#include "pixelview/PixelViewError.h"
#include "qzhost/PluginLoader.h"

namespace qzhost::pixelview {

namespace {

using OpenEntry = ImageFile* (*)(const std::string&, int);
using FormatsEntry = void (*)(std::vector<ImageFormat>&);

struct Module {
    OpenEntry open = nullptr;
    FormatsEntry formats = nullptr;
};

void* Entry(void* module, const char* name) {
    void* entry = ::dlsym(module, name);
    if (entry == nullptr) {
        throw HostFailed(
            std::string("the image reader module " QZ_IMAGEIO_MODULE " has no entry ") + name);
    }
    return entry;
}

Module LoadModule() {
    // Loaded by its full name beside the program: a file name alone would be looked up in
    // the run path of the caller of dlopen, which under a sanitizer is the sanitizer's
    // own library.
    const std::string folder = ProgramFolder();
    const std::string path = folder.empty() ? QZ_IMAGEIO_MODULE : folder + "/" QZ_IMAGEIO_MODULE;
    void* module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        const char* why = ::dlerror();
        throw HostFailed(
            std::string("the image reader module " QZ_IMAGEIO_MODULE " cannot be loaded: ") +
            (why != nullptr ? why : "unknown error"));
    }
    return {reinterpret_cast<OpenEntry>(Entry(module, "QZHostImageIO_OpenImageFile")),
            reinterpret_cast<FormatsEntry>(Entry(module, "QZHostImageIO_ReadableFormats"))};
}

const Module& LoadedModule() {
    // Loaded once, by the first caller; a load that throws is tried again by the next.
    static const Module module = LoadModule();
    return module;
}

} // namespace

std::unique_ptr<ImageFile> OpenImageFile(const std::string& path, int part) {
    return std::unique_ptr<ImageFile>(LoadedModule().open(path, part));
}

std::vector<ImageFormat> ReadableImageFormats() {
    std::vector<ImageFormat> formats;
    LoadedModule().formats(formats);
    return formats;
}

} // namespace qzhost::pixelview
