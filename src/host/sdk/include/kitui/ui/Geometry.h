// Points and rectangles of the UI toolkit.
#pragma once

namespace kitui::ui {

template <class T>
struct PointT {
    T x{};
    T y{};
    friend bool operator==(const PointT&, const PointT&) = default;
};

template <class T>
struct RectT {
    T x{};
    T y{};
    T width{};
    T height{};
    friend bool operator==(const RectT&, const RectT&) = default;
};

} // namespace kitui::ui
