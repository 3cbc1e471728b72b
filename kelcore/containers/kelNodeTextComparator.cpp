#include <kelcore/containers/kelNodeTextComparator.h>

#include <kelcore/containers/kelTextNode.h>

namespace KELKIT {

kelNodeTextComparator::kelNodeTextComparator(kelNodeTextComparator const& other)
    : kelNodeComparator(other) {}

kelNodeTextComparator& kelNodeTextComparator::operator=(kelNodeTextComparator const&) = default;

kelNodeTextComparator::~kelNodeTextComparator() = default;

int kelNodeTextComparator::compare(kelNode const* left, kelNode const* right) const {
    kelTextNode const* a = dynamic_cast<kelTextNode const*>(left);
    kelTextNode const* b = dynamic_cast<kelTextNode const*>(right);
    if (a == nullptr || b == nullptr) {
        if (a == b) {
            return 0;
        }
        return a != nullptr ? -1 : 1;
    }
    kelString const textA(a->getText());
    kelString const textB(b->getText());
    if (textA == textB) {
        return 0;
    }
    return textA < textB ? -1 : 1;
}

} // namespace KELKIT
