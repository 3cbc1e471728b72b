#ifndef KELCORE_CONTAINERS_KELTEXTNODE_H
#define KELCORE_CONTAINERS_KELTEXTNODE_H

#include <kelcore/containers/kelNode.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// A node with a text, empty by default. The text belongs to each handle: copies share the
// tree (see kelNode) and copy the text.
class KELCORE_API kelTextNode : public kelNode {
public:
    kelTextNode();
    explicit kelTextNode(kelNode* parent);
    kelTextNode(kelNode* parent, char const* text);
    kelTextNode(kelNode* parent, char const* text, UInt32 maxChildren);
    kelTextNode(kelTextNode const& other);
    kelTextNode& operator=(kelTextNode const& other);
    ~kelTextNode() override;

    // "kelTextNode@" and the low 32 bits of the object's address in decimal; not the text.
    kelString toString() const override;

    // null is taken as the empty text.
    void setText(char const* text);
    char const* getText() const;

private:
    kelString mText;
};

} // namespace KELKIT

#endif
