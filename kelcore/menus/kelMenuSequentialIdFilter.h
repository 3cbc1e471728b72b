#ifndef KELCORE_MENUS_KELMENUSEQUENTIALIDFILTER_H
#define KELCORE_MENUS_KELMENUSEQUENTIALIDFILTER_H

#include <kelcore/containers/kelNodeFilter.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// Matches the kelMenu entries whose sequentialId equals the filter's; -1 finds the entries where
// it is not set. A node that is no kelMenu, and null, never matches.
class KELCORE_API kelMenuSequentialIdFilter : public virtual kelNodeFilter {
public:
    explicit kelMenuSequentialIdFilter(SInt32 sequentialId);
    kelMenuSequentialIdFilter(kelMenuSequentialIdFilter const& other);
    kelMenuSequentialIdFilter& operator=(kelMenuSequentialIdFilter const& other);
    virtual ~kelMenuSequentialIdFilter();

    bool matches(kelNode const* node) const override;

private:
    SInt32 mId;
};

} // namespace KELKIT

#endif
