#ifndef KELCORE_FRAME_KELBASEENUM_H
#define KELCORE_FRAME_KELBASEENUM_H

#include <kelcore/frame/kelExport.h>

namespace KELKIT {

// The base of every enumeration class: one integer with its name, parsing from text, the list
// of named values, stepping with wrap-around, and flag arithmetic.
//
// An enumeration class lists its rows once, as an X-macro of (Name, number) pairs, and gets
// everything else from KEL_ENUM_MEMBERS and KEL_ENUM_DEFINE:
//
//     #define KEL_ROWS_kelColour(X) X(Red, 1) X(Green, 2)
//     class KELCORE_API kelColour : public kelBaseEnum {
//     public:
//         enum Enum : int { KEL_ROWS_kelColour(KEL_ENUM_ENUMERATOR) };
//         KEL_ENUM_MEMBERS(kelColour)
//     };
//     // in kelColour.cpp:
//     KEL_ENUM_DEFINE(kelColour, kelColour, KEL_ROWS_kelColour)
//
// The stored value is any int, named or not; unnamed values have the empty text as name.
class KELCORE_API kelBaseEnum {
public:
    kelBaseEnum();
    kelBaseEnum(kelBaseEnum const& other);
    kelBaseEnum& operator=(kelBaseEnum const& other);
    virtual ~kelBaseEnum();

    virtual char const* toString() const = 0;
    virtual int* getValues() const = 0;
    virtual int getNumValues() const = 0;
    // True when every bit of flags is set; no flags at all give true.
    virtual bool isFlagsEnabled(int flags) const = 0;
    virtual void setFlags(int flags, bool enable) = 0;
    virtual int getValue() const = 0;
    // The next (previous) named value, wrapping at the ends; an unnamed value steps to the
    // first named one in both directions.
    virtual void next() = 0;
    virtual void previous() = 0;

protected:
    // The rows of one class, in table order.
    struct Table {
        int* values;
        char const* const* names;
        int count;
    };

    static char const* nameOf(Table const& table, int value);
    static int following(Table const& table, int value);
    static int preceding(Table const& table, int value);
    // Exact names first, then the names in capitals; the text is never changed. No match
    // (and a null text) give 0.
    static int parse(Table const& table, char const* text);
    static int withFlags(int value, int flags, bool enable);
    static bool hasFlags(int value, int flags);
};

} // namespace KELKIT

#define KEL_ENUM_ENUMERATOR(name, number) name = number,
#define KEL_ENUM_ROW_NAME(name, number) #name,
#define KEL_ENUM_ROW_VALUE(name, number) number,

// The members every enumeration class declares; its `Enum` comes first.
#define KEL_ENUM_MEMBERS(E)                                                                        \
public:                                                                                            \
    E();                                                                                           \
    E(int value);                                                                                  \
    E(E const& other);                                                                             \
    ~E() override;                                                                                 \
    E& operator=(E const& other);                                                                  \
    E& operator=(int value);                                                                       \
    E& operator=(Enum const& value);                                                               \
    E& operator=(char const* name);                                                                \
    bool operator==(Enum const& value) const;                                                      \
    bool operator!=(Enum const& value) const;                                                      \
    operator Enum&();                                                                              \
    operator Enum const&() const;                                                                  \
    char const* toString() const override;                                                         \
    int* getValues() const override;                                                               \
    int getNumValues() const override;                                                             \
    bool isFlagsEnabled(int flags) const override;                                                 \
    void setFlags(int flags, bool enable) override;                                                \
    int getValue() const override;                                                                 \
    void next() override;                                                                          \
    void previous() override;                                                                      \
                                                                                                   \
    /* The named values in table order. */                                                         \
    static int values[];                                                                           \
                                                                                                   \
private:                                                                                           \
    static Table const& table();                                                                   \
                                                                                                   \
    Enum mValue;

// Defines the members of the enumeration class Q (its qualified name; N is its own name),
// whose rows the X-macro ROWS lists.
#define KEL_ENUM_DEFINE(Q, N, ROWS)                                                                \
    int Q::values[] = {ROWS(KEL_ENUM_ROW_VALUE)};                                                  \
    ::KELKIT::kelBaseEnum::Table const& Q::table() {                                               \
        static char const* const names[] = {ROWS(KEL_ENUM_ROW_NAME)};                              \
        static_assert(sizeof(names) / sizeof(names[0]) == sizeof(values) / sizeof(values[0]),      \
                      "one name per value");                                                       \
        static Table const rows = {values, names,                                                  \
                                   static_cast<int>(sizeof(values) / sizeof(values[0]))};          \
        return rows;                                                                               \
    }                                                                                              \
    Q::N() : mValue(static_cast<Enum>(0)) {}                                                       \
    Q::N(int value) : mValue(static_cast<Enum>(value)) {}                                          \
    Q::N(Q const& other) : ::KELKIT::kelBaseEnum(other), mValue(other.mValue) {}                   \
    Q::~N() {}                                                                                     \
    Q& Q::operator=(Q const& other) {                                                              \
        mValue = other.mValue;                                                                     \
        return *this;                                                                              \
    }                                                                                              \
    Q& Q::operator=(int value) {                                                                   \
        mValue = static_cast<Enum>(value);                                                         \
        return *this;                                                                              \
    }                                                                                              \
    Q& Q::operator=(Enum const& value) {                                                           \
        mValue = value;                                                                            \
        return *this;                                                                              \
    }                                                                                              \
    Q& Q::operator=(char const* name) {                                                            \
        mValue = static_cast<Enum>(parse(table(), name));                                          \
        return *this;                                                                              \
    }                                                                                              \
    bool Q::operator==(Enum const& value) const {                                                  \
        return mValue == value;                                                                    \
    }                                                                                              \
    bool Q::operator!=(Enum const& value) const {                                                  \
        return mValue != value;                                                                    \
    }                                                                                              \
    Q::operator Q::Enum&() {                                                                       \
        return mValue;                                                                             \
    }                                                                                              \
    Q::operator Q::Enum const&() const {                                                           \
        return mValue;                                                                             \
    }                                                                                              \
    char const* Q::toString() const {                                                              \
        return nameOf(table(), mValue);                                                            \
    }                                                                                              \
    int* Q::getValues() const {                                                                    \
        return table().values;                                                                     \
    }                                                                                              \
    int Q::getNumValues() const {                                                                  \
        return table().count;                                                                      \
    }                                                                                              \
    bool Q::isFlagsEnabled(int flags) const {                                                      \
        return hasFlags(mValue, flags);                                                            \
    }                                                                                              \
    void Q::setFlags(int flags, bool enable) {                                                     \
        mValue = static_cast<Enum>(withFlags(mValue, flags, enable));                              \
    }                                                                                              \
    int Q::getValue() const {                                                                      \
        return mValue;                                                                             \
    }                                                                                              \
    void Q::next() {                                                                               \
        mValue = static_cast<Enum>(following(table(), mValue));                                    \
    }                                                                                              \
    void Q::previous() {                                                                           \
        mValue = static_cast<Enum>(preceding(table(), mValue));                                    \
    }

#endif
