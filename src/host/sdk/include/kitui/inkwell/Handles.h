// Shared, reference-counted handles to the objects of the drawing library. Every object
// that a supplier creates is handed out through one of these; it lives as long as a
// handle to it does.
#pragma once

#include <boost/shared_ptr.hpp>

namespace kitui::inkwell {

class PathInterface;
class PenInterface;
class BrushInterface;
class ShaderInterface;
class PictureInterface;
class SupplierInterface;
class SurfaceInterface;

using PathRef = boost::shared_ptr<PathInterface>;
using PenRef = boost::shared_ptr<PenInterface>;
using BrushRef = boost::shared_ptr<BrushInterface>;
using ShaderRef = boost::shared_ptr<ShaderInterface>;
using PictureRef = boost::shared_ptr<PictureInterface>;
using SupplierRef = boost::shared_ptr<SupplierInterface>;
using SurfaceRef = boost::shared_ptr<SurfaceInterface>;

} // namespace kitui::inkwell
