#include "script/StringPlacement.h"

namespace qzhost::script {

namespace {
StringPlacement* gPlacement = nullptr;
} // namespace

void SetStringPlacement(StringPlacement* placement) noexcept {
    gPlacement = placement;
}

StringPlacement* CurrentStringPlacement() noexcept {
    return gPlacement;
}

} // namespace qzhost::script
