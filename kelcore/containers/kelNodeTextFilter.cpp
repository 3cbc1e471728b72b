#include <kelcore/containers/kelNodeTextFilter.h>

#include <kelcore/containers/kelTextNode.h>

namespace KELKIT {

kelNodeTextFilter::kelNodeTextFilter(char const* text) : mText(text) {}

kelNodeTextFilter::kelNodeTextFilter(kelNodeTextFilter const&) = default;

kelNodeTextFilter& kelNodeTextFilter::operator=(kelNodeTextFilter const&) = default;

kelNodeTextFilter::~kelNodeTextFilter() = default;

bool kelNodeTextFilter::matches(kelNode const* node) const {
    kelTextNode const* text = dynamic_cast<kelTextNode const*>(node);
    return text != nullptr && mText == text->getText();
}

} // namespace KELKIT
