// A growing buffer of text for the output of one point, written through a cursor: the
// writer makes room for what it may write, writes it, and sets the end, so that a JSON
// object of a few kilobytes costs a few checks of room rather than one per piece.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace qzhost::pixelview {

class TextBuffer {
public:
    /// Empties the buffer; its storage is kept.
    void Clear() noexcept { size_ = 0; }

    /// Makes room for `count` more characters and returns where they go; Commit then
    /// says where the written text ends.
    char* Room(std::size_t count) {
        if (capacity_ - size_ < count) {
            Grow(count);
        }
        return data_.get() + size_;
    }
    void Commit(const char* end) noexcept { size_ = static_cast<std::size_t>(end - data_.get()); }

    void Append(std::string_view text) {
        if (text.empty()) {
            return; // an empty view may point nowhere
        }
        char* at = Room(text.size());
        std::memcpy(at, text.data(), text.size());
        size_ += text.size();
    }
    void Append(char c) {
        *Room(1) = c;
        ++size_;
    }
    void Fill(std::size_t count, char c) {
        if (count == 0) {
            return;
        }
        std::memset(Room(count), c, count);
        size_ += count;
    }
    /// Drops everything after the first `size` characters.
    void Truncate(std::size_t size) noexcept {
        if (size < size_) {
            size_ = size;
        }
    }

    std::size_t Size() const noexcept { return size_; }
    std::string_view View() const noexcept { return {data_.get(), size_}; }

private:
    void Grow(std::size_t count) {
        std::size_t capacity = capacity_ == 0 ? 4096 : capacity_ * 2;
        while (capacity - size_ < count) {
            capacity *= 2;
        }
        auto data = std::make_unique_for_overwrite<char[]>(capacity);
        if (size_ > 0) {
            std::memcpy(data.get(), data_.get(), size_);
        }
        data_ = std::move(data);
        capacity_ = capacity;
    }

    std::unique_ptr<char[]> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace qzhost::pixelview
