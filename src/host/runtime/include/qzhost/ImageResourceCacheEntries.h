// What an image resource cache holds: decoded pictures by key. The key names the
// picture, its state and its UI scale (the runtime's picture loader builds it); the
// picture is the loader's own decoded object.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "kitui/utility/InkwellImageResourceCache.h"

struct kitui::utility::InkwellImageResourceCache::Entries {
    std::map<std::string, std::shared_ptr<void>> pictures;
};
