#include <kelcore/containers/kelTextNode.h>

#include <kelcore/strings/kelStringConverter.h>

#include <cstdint>

namespace KELKIT {

kelTextNode::kelTextNode() = default;

kelTextNode::kelTextNode(kelNode* parent) : kelNode(parent) {}

kelTextNode::kelTextNode(kelNode* parent, char const* text) : kelNode(parent), mText(text) {}

kelTextNode::kelTextNode(kelNode* parent, char const* text, UInt32 maxChildren)
    : kelNode(parent, maxChildren), mText(text) {}

kelTextNode::kelTextNode(kelTextNode const& other) = default;

kelTextNode& kelTextNode::operator=(kelTextNode const& other) {
    kelNode::operator=(other);
    mText = other.mText;
    return *this;
}

kelTextNode::~kelTextNode() = default;

kelString kelTextNode::toString() const {
    return kelString("kelTextNode@") + kelStringConverter::toString(static_cast<UInt32>(
                                           reinterpret_cast<std::uintptr_t>(this)));
}

void kelTextNode::setText(char const* text) {
    mText = text;
}

char const* kelTextNode::getText() const {
    return mText.c_str();
}

} // namespace KELKIT
