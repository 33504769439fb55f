#include "kitui/utility/ResourceManager.h"

namespace kitui::utility {

ResourceManager::~ResourceManager() = default;

} // namespace kitui::utility
