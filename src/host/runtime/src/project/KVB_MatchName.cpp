// Match names: reference-counted records of a name's text, shared by every copy.
#include <atomic>
#include <cstring>
#include <string>

#include "host/KVB_MatchName.h"
#include "qzhost/LiveMatchNames.h"

struct KVB_MatchNameRecord {
    explicit KVB_MatchNameRecord(const char* name) : text(name) {}
    std::atomic<std::int64_t> references{1};
    const std::string text;
};

namespace {

// Names are copied on any thread: the count is atomic, like the references.
std::atomic<std::int64_t> gLiveNames{0};

KVB_MatchNameRecord* Acquire(KVB_MatchNameRecord* record) noexcept {
    if (record != nullptr) {
        record->references.fetch_add(1, std::memory_order_relaxed);
        gLiveNames.fetch_add(1, std::memory_order_relaxed);
    }
    return record;
}

} // namespace

KVB_MatchName::KVB_MatchName(const char* text) {
    if (text != nullptr && *text != '\0') {
        record_ = new KVB_MatchNameRecord(text);
        gLiveNames.fetch_add(1, std::memory_order_relaxed);
    }
}

KVB_MatchName::KVB_MatchName(const KVB_MatchName& other) noexcept
    : record_(Acquire(other.record_)) {}

KVB_MatchName::KVB_MatchName(KVB_MatchName&& other) noexcept : record_(other.record_) {
    other.record_ = nullptr;
}

KVB_MatchName& KVB_MatchName::operator=(const KVB_MatchName& other) noexcept {
    if (record_ != other.record_) {
        KVB_MatchNameRecord* const taken = Acquire(other.record_);
        Release();
        record_ = taken;
    }
    return *this;
}

KVB_MatchName& KVB_MatchName::operator=(KVB_MatchName&& other) noexcept {
    if (this != &other) {
        Release();
        record_ = other.record_;
        other.record_ = nullptr;
    }
    return *this;
}

KVB_MatchName::~KVB_MatchName() {
    Release();
}

void KVB_MatchName::Release() noexcept {
    if (record_ == nullptr) {
        return;
    }
    gLiveNames.fetch_sub(1, std::memory_order_relaxed);
    if (record_->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete record_;
    }
    record_ = nullptr;
}

const char* KVB_MatchName::Text() const noexcept {
    return record_ != nullptr ? record_->text.c_str() : "";
}

bool KVB_MatchName::operator==(const KVB_MatchName& other) const noexcept {
    if (record_ == other.record_) {
        return true;
    }
    if (record_ == nullptr || other.record_ == nullptr) {
        return false;
    }
    return record_->text == other.record_->text;
}

namespace qzhost {

std::int64_t LiveMatchNameCount() noexcept {
    return gLiveNames.load(std::memory_order_relaxed);
}

} // namespace qzhost
