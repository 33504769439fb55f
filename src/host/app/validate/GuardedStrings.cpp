#include "validate/GuardedStrings.h"

#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "validate/ChildRunner.h"

namespace qzhost::validate {

namespace {

const GuardedStrings* gActive = nullptr;
struct sigaction gPreviousSegv;
struct sigaction gPreviousBus;

void WriteText(int fd, const char* text) noexcept {
    std::size_t left = std::strlen(text);
    while (left > 0) {
        const ssize_t written = ::write(fd, text, left);
        if (written <= 0) {
            return;
        }
        text += written;
        left -= static_cast<std::size_t>(written);
    }
}

void OnFault(int signal, siginfo_t* info, void*) {
    const GuardedStrings* active = gActive;
    const int fd = ResultDescriptor();
    if (active != nullptr && fd >= 0) {
        active->ReportFault(info->si_addr, fd);
    }
    // Back to the handler from before (the default action, or a sanitizer's report): the
    // faulting access runs again and ends the process, which the parent reports.
    ::sigaction(signal, signal == SIGSEGV ? &gPreviousSegv : &gPreviousBus, nullptr);
}

} // namespace

GuardedStrings::GuardedStrings() : page_(static_cast<std::size_t>(::sysconf(_SC_PAGESIZE))) {
    struct sigaction action {};
    action.sa_sigaction = OnFault;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGSEGV, &action, &gPreviousSegv);
    ::sigaction(SIGBUS, &action, &gPreviousBus);
    gActive = this;
    script::SetStringPlacement(this);
}

GuardedStrings::~GuardedStrings() {
    script::SetStringPlacement(nullptr);
    gActive = nullptr;
    ::sigaction(SIGSEGV, &gPreviousSegv, nullptr);
    ::sigaction(SIGBUS, &gPreviousBus, nullptr);
    for (const Region& region : regions_) {
        ::munmap(region.map, (region.dataPages + 1) * page_);
    }
}

void GuardedStrings::BeginCall(const std::string& call) {
    call_ = call;
    argument_ = 0;
}

void* GuardedStrings::PlaceBytes(const void* bytes, std::size_t size) {
    const std::size_t data_pages = (size + page_ - 1) / page_;
    void* mapped = ::mmap(nullptr, (data_pages + 1) * page_, PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) {
        throw std::runtime_error(std::string("cannot map pages for a string: ") +
                                 std::strerror(errno));
    }
    Region region;
    region.map = static_cast<char*>(mapped);
    region.dataPages = data_pages;
    region.begin = region.map + data_pages * page_ - size;
    std::memcpy(region.begin, bytes, size);
    // The string's pages are read-only during the call, and the page after it is never
    // accessible.
    ::mprotect(region.map, data_pages * page_, PROT_READ);
    ::mprotect(region.map + data_pages * page_, page_, PROT_NONE);
    ++argument_;
    region.label = "string argument " + std::to_string(argument_) + " of " + call_;
    regions_.push_back(std::move(region));
    return regions_.back().begin;
}

const char* GuardedStrings::Place(std::string_view text) {
    std::string copy(text);
    return static_cast<const char*>(PlaceBytes(copy.c_str(), copy.size() + 1));
}

const kitcore::utility::UTF16Char*
GuardedStrings::Place(std::basic_string_view<kitcore::utility::UTF16Char> text) {
    std::basic_string<kitcore::utility::UTF16Char> copy(text);
    return static_cast<const kitcore::utility::UTF16Char*>(
        PlaceBytes(copy.c_str(), (copy.size() + 1) * sizeof(kitcore::utility::UTF16Char)));
}

void GuardedStrings::Seal() {
    for (; sealedUpTo_ < regions_.size(); ++sealedUpTo_) {
        Region& region = regions_[sealedUpTo_];
        ::madvise(region.map, region.dataPages * page_, MADV_DONTNEED);
        ::mprotect(region.map, region.dataPages * page_, PROT_NONE);
        region.sealed = true;
    }
}

bool GuardedStrings::ReportFault(const void* address, int fd) const noexcept {
    const char* at = static_cast<const char*>(address);
    for (const Region& region : regions_) {
        const char* guard = region.map + region.dataPages * page_;
        if (at < region.map || at >= guard + page_) {
            continue;
        }
        const char* what = nullptr;
        if (at >= guard) {
            what = "fail the plug-in read past the terminating zero of the ";
        } else if (region.sealed) {
            what = "fail the plug-in read the ";
        } else {
            what = "fail the plug-in wrote into the ";
        }
        WriteText(fd, what);
        WriteText(fd, region.label.c_str());
        if (at < guard && region.sealed) {
            WriteText(fd, " after that call had returned (it kept the caller's pointer)");
        } else if (at < guard) {
            WriteText(fd, " (a caller's string is read-only)");
        }
        WriteText(fd, "\n");
        return true;
    }
    return false;
}

} // namespace qzhost::validate
