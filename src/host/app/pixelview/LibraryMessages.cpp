#include "pixelview/LibraryMessages.h"

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string_view>

namespace qzhost::pixelview {

namespace {

/// Past this many characters what the libraries said is cut: the command's message is
/// one line that a person reads.
constexpr std::size_t kMaxWords = 300;

constexpr std::string_view kBlanks = " \t\r\n\f\v";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace

LibraryMessages::LibraryMessages() : file_(::open_memstream(&buffer_, &size_)) {
    if (file_ == nullptr) {
        throw std::runtime_error("no memory stream for the image libraries' messages");
    }
}

LibraryMessages::~LibraryMessages() {
    std::fclose(file_);
    std::free(buffer_);
}

LibraryMessages::Trap::Trap(LibraryMessages& messages)
    : stderr_(stderr), cerr_(std::cerr.rdbuf(&messages.stream_)),
      clog_(std::clog.rdbuf(&messages.stream_)) {
    // What the C library buffered for the real standard error goes out first.
    std::fflush(stderr_);
    stderr = messages.file_;
}

LibraryMessages::Trap::~Trap() {
    stderr = stderr_;
    std::clog.rdbuf(clog_);
    std::cerr.rdbuf(cerr_);
}

std::string LibraryMessages::Take() {
    std::fflush(file_);
    std::string text(buffer_ != nullptr ? buffer_ : "", size_);
    text += stream_.str();
    // A new memory stream for what comes next; the stream writes the place and size of
    // its text into the members.
    std::fclose(file_);
    std::free(buffer_);
    buffer_ = nullptr;
    size_ = 0;
    file_ = ::open_memstream(&buffer_, &size_);
    if (file_ == nullptr) {
        throw std::runtime_error("no memory stream for the image libraries' messages");
    }
    stream_.str({});
    std::string words;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string_view line = Trimmed(std::string_view(text).substr(start, end - start));
        if (!line.empty()) {
            if (!words.empty()) {
                words += "; ";
            }
            words += line;
        }
        start = end + 1;
    }
    if (words.size() > kMaxWords) {
        words.resize(kMaxWords);
        words += "...";
    }
    return words;
}

std::string WithLibraryWords(const std::string& message, const std::string& words) {
    if (words.empty() || message.find(words) != std::string::npos) {
        return message;
    }
    return message + " (" + words + ")";
}

} // namespace qzhost::pixelview
