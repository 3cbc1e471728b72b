#ifndef KELCORE_CONTAINERS_KELNODETEXTFILTER_H
#define KELCORE_CONTAINERS_KELNODETEXTFILTER_H

#include <kelcore/containers/kelNodeFilter.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// Matches the kelTextNode objects whose text equals the filter's exactly (kelString equality);
// any other node, and null, does not match.
class KELCORE_API kelNodeTextFilter : public virtual kelNodeFilter {
public:
    explicit kelNodeTextFilter(char const* text);
    kelNodeTextFilter(kelNodeTextFilter const& other);
    kelNodeTextFilter& operator=(kelNodeTextFilter const& other);
    virtual ~kelNodeTextFilter();

    bool matches(kelNode const* node) const override;

private:
    kelString mText;
};

} // namespace KELKIT

#endif
