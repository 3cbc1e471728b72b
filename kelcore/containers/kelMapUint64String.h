#ifndef KELCORE_CONTAINERS_KELMAPUINT64STRING_H
#define KELCORE_CONTAINERS_KELMAPUINT64STRING_H

#include <kelcore/containers/kelLists.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

#include <memory>

namespace KELKIT {

// An ordered dictionary from unsigned 64-bit keys to text; keys are unique.
//
// A copy, by construction or assignment, refers to the same entries as its source: a change
// through either shows in both. The entries go when the last object referring to them goes.
class KELCORE_API kelMapUint64String {
public:
    kelMapUint64String();
    kelMapUint64String(kelMapUint64String const& other);
    kelMapUint64String& operator=(kelMapUint64String const& other);
    virtual ~kelMapUint64String();

    virtual bool containsKey(UInt64 const& key);
    // Copies the key's text to value and returns true; leaves value alone for a missing key.
    virtual bool get(UInt64 const& key, kelString& value);
    virtual void clear();
    // All keys, ascending.
    virtual kelListUInt64 getKeys();
    // Adds the entry or replaces the key's text; value is not changed.
    virtual void set(UInt64 const& key, kelString& value);
    // A missing key is no error.
    virtual void remove(UInt64 const& key);

private:
    class Impl;
    std::shared_ptr<Impl> mImpl;
};

} // namespace KELKIT

#endif
