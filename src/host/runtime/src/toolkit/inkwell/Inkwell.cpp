// A drawing context: its supplier and its surface, held for as long as it lives.
#include "kitui/inkwell/Inkwell.h"

#include <utility>

namespace kitui::inkwell {

Inkwell::Inkwell(SupplierRef supplier, SurfaceRef surface)
    : supplier_(std::move(supplier)), surface_(std::move(surface)) {}

Inkwell::~Inkwell() = default;

} // namespace kitui::inkwell
