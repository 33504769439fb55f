// A match name: the property database's name for one step of a property path (a layer's
// "POSITION", a mask's "MASK_OPACITY"...). Names are values compared by their text; each
// one holds a counted reference to the host's shared record of the text, which it releases
// when it goes.
#pragma once

#include "qzgp/QZ_Basic.h"

/// The host's shared, reference-counted record of a name's text.
struct KVB_MatchNameRecord;

class QZ_HOST_API KVB_MatchName {
public:
    /// [any-thread] The empty name; it holds no record.
    KVB_MatchName() noexcept = default;
    /// [any-thread] A name with the text `text` (copied); null or "" gives the empty name.
    explicit KVB_MatchName(const char* text);
    /// [any-thread] Another reference to the same record.
    KVB_MatchName(const KVB_MatchName& other) noexcept;
    /// [any-thread] Takes over the reference of `other`, which becomes the empty name.
    KVB_MatchName(KVB_MatchName&& other) noexcept;
    /// [any-thread] Takes the other name's text.
    KVB_MatchName& operator=(const KVB_MatchName& other) noexcept;
    /// [any-thread] Takes the other name's text.
    KVB_MatchName& operator=(KVB_MatchName&& other) noexcept;
    /// [any-thread] Releases the reference; the last one frees the record.
    ~KVB_MatchName();

    /// [any-thread] The name's text, "" for the empty name. Valid while the name lives.
    const char* Text() const noexcept;
    /// [any-thread] Whether this is the empty name.
    bool Empty() const noexcept { return record_ == nullptr; }

    /// [any-thread] Names are equal when their texts are equal, byte for byte.
    bool operator==(const KVB_MatchName& other) const noexcept;

private:
    void Release() noexcept;

    KVB_MatchNameRecord* record_ = nullptr;
};
