#ifndef KELCORE_MENUS_KELMENUUNIQUEIDFILTER_H
#define KELCORE_MENUS_KELMENUUNIQUEIDFILTER_H

#include <kelcore/containers/kelNodeFilter.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// Matches the kelMenu entries whose uniqueId equals the filter's; -1 finds the entries where
// it is not set. A node that is no kelMenu, and null, never matches.
class KELCORE_API kelMenuUniqueIdFilter : public virtual kelNodeFilter {
public:
    explicit kelMenuUniqueIdFilter(SInt32 uniqueId);
    kelMenuUniqueIdFilter(kelMenuUniqueIdFilter const& other);
    kelMenuUniqueIdFilter& operator=(kelMenuUniqueIdFilter const& other);
    virtual ~kelMenuUniqueIdFilter();

    bool matches(kelNode const* node) const override;

private:
    SInt32 mId;
};

} // namespace KELKIT

#endif
