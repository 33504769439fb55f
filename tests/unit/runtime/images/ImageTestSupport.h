// Picture resources made in the test: a resource manager that holds bytes by name and
// type, PNG bytes written with Cairo, and a supplier that keeps the pictures it makes.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <boost/make_shared.hpp>

#include "kitui/inkwell/PictureInterface.h"
#include "kitui/inkwell/SupplierInterface.h"
#include "kitui/utility/ResourceManager.h"

namespace imagetest {

using kitcore::utility::UTF16String;

inline std::string Narrow(const UTF16String& text) {
    return std::string(text.begin(), text.end());
}

class TestResources : public kitui::utility::ResourceManager {
public:
    void Add(const std::string& name, const std::string& type, std::vector<std::uint8_t> bytes) {
        resources_[{name, type}] = std::move(bytes);
    }
    bool GetResourceBytes(const UTF16String& name, const UTF16String& type,
                          std::vector<std::uint8_t>& bytes) const override {
        asked.emplace_back(Narrow(name), Narrow(type));
        bytes.clear();
        auto it = resources_.find({Narrow(name), Narrow(type)});
        if (it == resources_.end()) {
            return false;
        }
        bytes = it->second;
        return true;
    }
    mutable std::vector<std::pair<std::string, std::string>> asked;

private:
    std::map<std::pair<std::string, std::string>, std::vector<std::uint8_t>> resources_;
};

/// A picture that keeps what NewPicture was given.
class TestPicture : public kitui::inkwell::PictureInterface {
public:
    TestPicture(int width, int height, float scale, const std::uint32_t* pixels, std::size_t stride)
        : width_(width), height_(height), scale_(scale) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                pixels_.push_back(
                    pixels[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)]);
            }
        }
    }
    int GetPixelWidth() const override { return width_; }
    int GetPixelHeight() const override { return height_; }
    float GetScale() const override { return scale_; }
    std::uint32_t GetPixel(int x, int y) const override {
        return pixels_.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                          static_cast<std::size_t>(x));
    }

private:
    int width_;
    int height_;
    float scale_;
    std::vector<std::uint32_t> pixels_;
};

class TestSupplier : public kitui::inkwell::SupplierInterface {
public:
    kitui::inkwell::PathRef NewPath() override { return {}; }
    kitui::inkwell::PenRef NewPen(const kitui::inkwell::ColorRGBA&, float) override { return {}; }
    kitui::inkwell::BrushRef NewBrush(const kitui::inkwell::ColorRGBA&) override { return {}; }
    kitui::inkwell::ShaderRef NewLinearShader(const kitui::ui::PointT<float>&,
                                              const kitui::ui::PointT<float>&,
                                              const kitui::inkwell::ColorRGBA&,
                                              const kitui::inkwell::ColorRGBA&) override {
        return {};
    }
    kitui::inkwell::PictureRef NewPicture(int width, int height, float scale,
                                          const std::uint32_t* pixels,
                                          std::size_t stride) override {
        ++pictures;
        return boost::make_shared<TestPicture>(width, height, scale, pixels, stride);
    }
    bool UseShadersForFills() const override { return false; }
    int pictures = 0;
};

/// PNG bytes of a `width` x `height` picture filled with `argb` (not premultiplied), with
/// its top-left pixel `corner` when given.
inline std::vector<std::uint8_t> MakePng(int width, int height, std::uint32_t argb,
                                         std::uint32_t corner) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cr = cairo_create(surface);
    const auto fill = [&](std::uint32_t color, double w, double h) {
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        cairo_set_source_rgba(cr, ((color >> 16) & 0xFF) / 255.0, ((color >> 8) & 0xFF) / 255.0,
                              (color & 0xFF) / 255.0, (color >> 24) / 255.0);
        cairo_rectangle(cr, 0, 0, w, h);
        cairo_fill(cr);
    };
    fill(argb, width, height);
    fill(corner, 1, 1);
    cairo_destroy(cr);
    std::vector<std::uint8_t> bytes;
    const cairo_status_t status = cairo_surface_write_to_png_stream(
        surface,
        [](void* closure, const unsigned char* data, unsigned int length) {
            auto* out = static_cast<std::vector<std::uint8_t>*>(closure);
            out->insert(out->end(), data, data + length);
            return CAIRO_STATUS_SUCCESS;
        },
        &bytes);
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot write the test PNG");
    }
    return bytes;
}

inline std::vector<std::uint8_t> Bytes(const std::string& text) {
    return std::vector<std::uint8_t>(text.begin(), text.end());
}

} // namespace imagetest
