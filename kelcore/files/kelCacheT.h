#ifndef KELCORE_FILES_KELCACHET_H
#define KELCORE_FILES_KELCACHET_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/time/kelTime.h>

#include <list>
#include <memory>

namespace KELKIT {

// A keyed store whose entries expire: each entry holds a copy of its value until its expiration
// has passed. Entries stay in the order they were added; keys are compared with == and are
// unique.
//
// Expiry is lazy: nothing runs in the background, and a stale entry is dropped, with its
// memory, by the next find (which add, update, set and setExpiration call as well). A lookup
// therefore costs time in proportion to the number of entries, which have no upper limit.
//
// Copies are independent: a copy holds copies of the entries.
//
// The library instantiates it once, for kelCacheFile (kelCacheFile.h); other instantiations are
// the caller's own.
template <typename K, typename V>
class kelCacheT {
public:
    struct ENTRY {
        ENTRY(kelTime const& when, K const& k, V const& v) : expiration(when), key(k), value(v) {}
        // The moment from which the entry is stale.
        kelTime expiration;
        K key;
        V value;
    };

    kelCacheT();
    kelCacheT(kelCacheT const& other);
    kelCacheT& operator=(kelCacheT const& other);

    // Virtual operations, in the order of their slots. Operations defined through others call
    // them through their slots, so a derived class sees those calls.

    virtual ~kelCacheT();
    virtual void clear();
    // Drops every entry whose expiration is earlier than the present time, read once; an entry
    // that expires at this very second stays.
    virtual void removeExpired();
    // Appends an entry, unless find yields one for the key.
    virtual void add(K const& key, V const& value, kelTime const& expiration);
    // Gives the entry that find yields the new value and expiration; nothing without one.
    virtual void update(K const& key, V const& value, kelTime const& expiration);
    // update when find yields an entry, else add.
    virtual void set(K const& key, V const& value, kelTime const& expiration);
    // Gives the entry that find yields the new expiration; nothing without one.
    virtual void setExpiration(K const& key, kelTime const& expiration);
    // removeExpired, then the first entry with the key, or null. The entry stays where it is
    // until it goes: by clear, or by a later lookup once it has expired.
    virtual ENTRY* find(K const& key);

private:
    // A list: entries never move, so a value (a whole file, for kelCacheFile) is copied once on
    // the way in and never again while the store grows or drops entries around it.
    std::unique_ptr<std::list<ENTRY>> mEntries;
};

// The members are out of line: a Windows DLL exports no inline member of its instantiations.

template <typename K, typename V>
kelCacheT<K, V>::kelCacheT() : mEntries(new std::list<ENTRY>()) {}

template <typename K, typename V>
kelCacheT<K, V>::kelCacheT(kelCacheT const& other)
    : mEntries(new std::list<ENTRY>(*other.mEntries)) {}

template <typename K, typename V>
kelCacheT<K, V>& kelCacheT<K, V>::operator=(kelCacheT const& other) {
    if (this != &other) {
        *mEntries = *other.mEntries;
    }
    return *this;
}

template <typename K, typename V>
kelCacheT<K, V>::~kelCacheT() {}

template <typename K, typename V>
void kelCacheT<K, V>::clear() {
    mEntries->clear();
}

template <typename K, typename V>
void kelCacheT<K, V>::removeExpired() {
    kelTime const now = kelTime::now();
    mEntries->remove_if([&now](ENTRY const& entry) { return entry.expiration < now; });
}

template <typename K, typename V>
void kelCacheT<K, V>::add(K const& key, V const& value, kelTime const& expiration) {
    if (find(key) == nullptr) {
        mEntries->emplace_back(expiration, key, value);
    }
}

template <typename K, typename V>
void kelCacheT<K, V>::update(K const& key, V const& value, kelTime const& expiration) {
    if (ENTRY* const entry = find(key)) {
        entry->expiration = expiration;
        entry->value = value;
    }
}

template <typename K, typename V>
void kelCacheT<K, V>::set(K const& key, V const& value, kelTime const& expiration) {
    if (find(key) != nullptr) {
        update(key, value, expiration);
    } else {
        add(key, value, expiration);
    }
}

template <typename K, typename V>
void kelCacheT<K, V>::setExpiration(K const& key, kelTime const& expiration) {
    if (ENTRY* const entry = find(key)) {
        entry->expiration = expiration;
    }
}

template <typename K, typename V>
typename kelCacheT<K, V>::ENTRY* kelCacheT<K, V>::find(K const& key) {
    removeExpired();
    for (ENTRY& entry : *mEntries) {
        if (entry.key == key) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace KELKIT

#endif
