// What the image libraries say on their own. Some of the readers under OpenImageIO print
// their errors and warnings to standard error themselves (the PNG library prints
// "libpng error: ..." before OpenImageIO reports the same failure), which would put a
// second line beside the command's one message. While a trap is set, what is written
// to the C library's standard error stream or to the standard error streams of C++ is
// kept here instead; the command folds it into its message when the reading fails, and
// drops it when the reading succeeds.
#pragma once

#include <cstddef>
#include <cstdio>
#include <iosfwd>
#include <memory>
#include <sstream>
#include <string>

namespace qzhost::pixelview {

class LibraryMessages {
public:
    LibraryMessages();
    ~LibraryMessages();
    LibraryMessages(const LibraryMessages&) = delete;
    LibraryMessages& operator=(const LibraryMessages&) = delete;

    /// While it lives, standard error (the C stream and std::cerr, std::clog) writes into
    /// the messages. Setting it costs no system call: it is set around every call into
    /// the image libraries, a pixel's reading included.
    class Trap {
    public:
        explicit Trap(LibraryMessages& messages);
        ~Trap();
        Trap(const Trap&) = delete;
        Trap& operator=(const Trap&) = delete;

    private:
        std::FILE* stderr_;
        std::streambuf* cerr_;
        std::streambuf* clog_;
    };

    /// What was kept since the last Take, its lines joined by "; " and without blanks at
    /// either end; the messages are then empty.
    std::string Take();

private:
    char* buffer_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* file_ = nullptr;
    std::stringbuf stream_;
};

/// `message` with what the libraries said added in parentheses, unless they said nothing
/// or nothing that the message does not already say.
std::string WithLibraryWords(const std::string& message, const std::string& words);

} // namespace qzhost::pixelview
