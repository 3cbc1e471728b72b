#ifndef KELCORE_MENUS_KELMENUCOMMANDIDFILTER_H
#define KELCORE_MENUS_KELMENUCOMMANDIDFILTER_H

#include <kelcore/containers/kelNodeFilter.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// Matches the kelMenu entries whose commandId equals the filter's; -1 finds the entries where
// it is not set. A node that is no kelMenu, and null, never matches.
class KELCORE_API kelMenuCommandIdFilter : public virtual kelNodeFilter {
public:
    explicit kelMenuCommandIdFilter(SInt32 commandId);
    kelMenuCommandIdFilter(kelMenuCommandIdFilter const& other);
    kelMenuCommandIdFilter& operator=(kelMenuCommandIdFilter const& other);
    virtual ~kelMenuCommandIdFilter();

    bool matches(kelNode const* node) const override;

private:
    SInt32 mId;
};

} // namespace KELKIT

#endif
