/// @file
/// Lists of records with a `pNext`, from outside: they may run in a ring.
#pragma once

/// The last entry of a list that runs in a ring, counting each entry once; null for a list that ends.
/// Inline, it takes registers from the loops around it.
template <typename Entry> [[gnu::noinline]] const Entry* LastOfRing(const Entry* head) {
    const Entry* entry = head;
    // Nearly all lists end here, at less cost than below: a visit of an entry takes less than 1000 instructions.
    for (int left = 1024; left != 0; --left) {
        if (entry == nullptr || (entry = entry->pNext) == nullptr || (entry = entry->pNext) == nullptr ||
            (entry = entry->pNext) == nullptr) {
            return nullptr;
        }
        entry = entry->pNext;
    }
    // Brent's algorithm: from a mark that doubles its distance, the ring leads back to the mark.
    const Entry* mark = entry;
    unsigned long length = 0; // from the mark to the entry
    for (unsigned long limit = 1; entry != nullptr && (length == 0 || entry != mark); entry = entry->pNext, ++length) {
        if (length == limit) {
            mark = entry;
            limit *= 2;
            length = 0;
        }
    }
    if (entry == nullptr) {
        return nullptr;
    }
    // Two pointers that are a ring's length apart meet where it begins; the one ahead comes from the last entry.
    const Entry* last = nullptr;
    const Entry* ahead = head;
    for (; length != 0; --length) {
        last = ahead;
        ahead = ahead->pNext;
    }
    for (entry = head; entry != ahead; entry = entry->pNext) {
        last = ahead;
        ahead = ahead->pNext;
    }
    return last;
}

/// How a walk over a list ended.
enum class WalkEnd {
    LIST, ///< after the last entry
    VISIT,
    RING,
};

/// Visits each entry of a ring once, up to the last one.
template <typename Entry, typename Visit>
[[gnu::noinline]] WalkEnd WalkRing(Entry* head, const void* last, Visit visit) {
    for (Entry* entry = head;; entry = entry->pNext) {
        if (!visit(*entry)) {
            return WalkEnd::VISIT;
        }
        if (entry == last) {
            return WalkEnd::RING;
        }
    }
}

/// Visits each entry of a list once, until `visit(entry)` returns false.
template <typename Entry, typename Visit> WalkEnd WalkList(Entry* head, Visit visit) {
    if (const void* const last = LastOfRing(head); last != nullptr) {
        return WalkRing(head, last, visit);
    }
    for (Entry* entry = head; entry != nullptr; entry = entry->pNext) {
        if (!visit(*entry)) {
            return WalkEnd::VISIT;
        }
    }
    return WalkEnd::LIST;
}
