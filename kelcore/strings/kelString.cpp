#include <kelcore/strings/kelString.h>

#include <kelcore/internal/kelPieceRead.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

namespace KELKIT {

template class kelDefaultComparator<kelString>;

namespace {

char const* orEmpty(char const* text) {
    return text == nullptr ? "" : text;
}

int compareTexts(char const* a, char const* b) {
    return std::strcmp(a, b);
}

// The sign of strcmp(text, the one-character text of c), where the byte 0 is the empty text.
int compareWithCharacter(char const* text, char c) {
    int const first = static_cast<unsigned char>(text[0]);
    int const other = static_cast<unsigned char>(c);
    if (first != other || first == 0) {
        return first - other;
    }
    return text[1] == '\0' ? 0 : 1;
}

// A short text lives in its holder, one small heap block; making and freeing that block is most
// of what a short string costs over its whole life (the text of a number, say). So on Linux each
// thread keeps the holders of its last few short strings for its next ones. (The Windows build
// allocates each holder: its runtime gives no dependable end-of-thread clean-up to a DLL.)
#if defined(__ELF__)
constexpr int KEPT_HOLDERS = 16;

// Plain data, so that it stays readable after its thread's destructors ran: a string freed
// after that (by a later thread-local or a static object's destructor) goes back to the heap.
// The blocks it keeps hold no string: each is made anew in place.
struct HolderCache {
    void* blocks[KEPT_HOLDERS];
    int count;
    enum State : int { Unused, Open, Closed } state;
};

// Reached with one instruction, not a call: the library's own few bytes of thread storage.
__attribute__((tls_model("initial-exec"))) thread_local HolderCache holderCache;

// Frees the kept blocks when its thread ends.
struct HolderCacheCloser {
    ~HolderCacheCloser() {
        HolderCache& cache = holderCache;
        cache.state = HolderCache::Closed;
        while (cache.count > 0) {
            ::operator delete(cache.blocks[--cache.count]);
        }
    }
};

template <typename... Text>
std::string* makeHolder(Text&&... text) {
    HolderCache& cache = holderCache;
    if (cache.count > 0) {
        void* const block = cache.blocks[cache.count - 1];
        auto* const holder = new (block) std::string(std::forward<Text>(text)...);
        --cache.count; // only once the string stands: a failed one leaves the block kept
        return holder;
    }
    return new std::string(std::forward<Text>(text)...);
}

void giveBack(std::string* holder) noexcept {
    HolderCache& cache = holderCache;
    if (cache.state == HolderCache::Unused) {
        thread_local HolderCacheCloser closer;
        static_cast<void>(closer);
        cache.state = HolderCache::Open;
    }
    static std::size_t const inPlace = std::string().capacity();
    if (cache.state == HolderCache::Open && cache.count < KEPT_HOLDERS &&
        holder->capacity() <= inPlace) {
        holder->~basic_string();
        cache.blocks[cache.count++] = holder;
    } else {
        delete holder;
    }
}
#else
template <typename... Text>
std::string* makeHolder(Text&&... text) {
    return new std::string(std::forward<Text>(text)...);
}

void giveBack(std::string* holder) noexcept {
    delete holder;
}
#endif

} // namespace

kelString::kelString() : mText(makeHolder()) {}

kelString::kelString(kelString const& other)
    : kelISerializable(other), kelIHashable(other), mText(makeHolder(other.c_str())) {}

kelString::kelString(char const* text) : mText(makeHolder(orEmpty(text))) {}

kelString::kelString(char c) : mText(makeHolder(std::size_t(1), c)) {}

kelString::kelString(char const* text, UInt32 length)
    : mText(makeHolder(text, std::size_t(length))) {}

kelString::~kelString() {
    giveBack(mText.release());
}

char const* kelString::c_str() const {
    return mText->c_str();
}

UInt32 kelString::size() const {
    return static_cast<UInt32>(mText->size());
}

bool kelString::empty() const {
    return mText->empty();
}

void kelString::clear() {
    mText->clear();
}

char const& kelString::operator[](UInt32 pos) const {
    return (*mText)[pos];
}

char& kelString::operator[](UInt32 pos) {
    return (*mText)[pos];
}

// The editing operations below work on a copy of the c_str() text and assign it back; an
// empty text is left alone without allocating anything.

void kelString::trimRight(char c) {
    if (mText->empty()) {
        return;
    }
    std::string copy(c_str());
    std::string::size_type const last = copy.find_last_not_of(c);
    copy.erase(last == std::string::npos ? 0 : last + 1);
    *mText = std::move(copy);
}

void kelString::trimLeft(char c) {
    if (mText->empty()) {
        return;
    }
    std::string copy(c_str());
    copy.erase(0, copy.find_first_not_of(c));
    *mText = std::move(copy);
}

void kelString::trim(char c) {
    trimRight(c);
    trimLeft(c);
}

void kelString::trimRight() {
    trimRight(' ');
}

void kelString::trimLeft() {
    trimLeft(' ');
}

void kelString::trim() {
    trim(' ');
}

void kelString::reverse() {
    if (mText->empty()) {
        return;
    }
    std::string copy(c_str());
    std::string reversed(copy.rbegin(), copy.rend());
    *mText = std::move(reversed);
}

// toupper/tolower take the byte as an unsigned value: a negative argument other than EOF is
// undefined in C, and some C libraries index a table with it.
void kelString::makeUpper() {
    if (mText->empty()) {
        return;
    }
    std::string copy(c_str());
    for (char& ch : copy) {
        ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    }
    *mText = std::move(copy);
}

void kelString::makeLower() {
    if (mText->empty()) {
        return;
    }
    std::string copy(c_str());
    for (char& ch : copy) {
        ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    }
    *mText = std::move(copy);
}

void kelString::insert(UInt32 pos, kelString const& text) {
    insert(pos, text.c_str());
}

void kelString::insert(UInt32 pos, char const* text) {
    std::string::size_type const at = pos < mText->size() ? pos : mText->size();
    mText->insert(at, orEmpty(text));
}

// The character forms below act as the one-character text would, without building it: the
// byte 0 is the empty text.
void kelString::insert(UInt32 pos, char c) {
    if (c != '\0') {
        mText->insert(pos < mText->size() ? pos : mText->size(), 1, c);
    }
}

void kelString::append(kelString const& text) {
    append(text.c_str());
}

void kelString::append(char const* text) {
    mText->append(orEmpty(text));
}

void kelString::erase(UInt32 pos) {
    erase(pos, 1);
}

void kelString::erase(UInt32 pos, UInt32 count) {
    if (pos < mText->size()) {
        mText->erase(pos, count);
    }
}

UInt32 kelString::replace(char const* from, char const* to) {
    std::string const pattern(orEmpty(from));
    std::string const replacement(orEmpty(to));
    if (pattern.empty()) {
        return 0;
    }
    UInt32 count = 0;
    std::string::size_type at = 0;
    while ((at = mText->find(pattern, at)) != std::string::npos) {
        mText->replace(at, pattern.size(), replacement);
        ++count;
        at += replacement.size(); // never rescan what was just inserted
    }
    return count;
}

UInt32 kelString::replace(kelString const& from, kelString const& to) {
    return replace(from.c_str(), to.c_str());
}

UInt32 kelString::replace(kelString const& from, char const* to) {
    return replace(from.c_str(), to);
}

UInt32 kelString::replace(char const* from, kelString const& to) {
    return replace(from, to.c_str());
}

UInt32 kelString::replace(char from, char to) {
    if (from == '\0') {
        return 0;
    }
    if (to == '\0') {
        std::string::iterator const kept = std::remove(mText->begin(), mText->end(), from);
        UInt32 const count = static_cast<UInt32>(mText->end() - kept);
        mText->erase(kept, mText->end());
        return count;
    }
    UInt32 count = 0;
    for (char& ch : *mText) {
        if (ch == from) {
            ch = to;
            ++count;
        }
    }
    return count;
}

UInt32 kelString::replace(UInt32 pos, UInt32 count, char const* text) {
    if (pos >= mText->size()) {
        return 0;
    }
    std::string::size_type const before = mText->size();
    mText->replace(pos, count, orEmpty(text));
    return mText->size() != before ? 1 : 0;
}

UInt32 kelString::replace(UInt32 pos, UInt32 count, kelString const& text) {
    return replace(pos, count, text.c_str());
}

kelString kelString::subString(UInt32 start, UInt32 count) const {
    kelString result;
    if (start < mText->size()) {
        *result.mText = mText->substr(start, count);
    }
    return result;
}

kelString kelString::subString(UInt32 count) const {
    return subString(0, count);
}

kelString kelString::subStringLeft(UInt32 count) const {
    return subString(0, count);
}

kelString kelString::subStringRight(UInt32 count) const {
    // 32-bit subtraction on purpose: a count above size() wraps beyond the end.
    return subString(static_cast<UInt32>(size() - count), count);
}

bool kelString::find(char const* text, UInt32 start, UInt32& pos) const {
    std::string::size_type const at = mText->find(orEmpty(text), start);
    if (at == std::string::npos) {
        return false;
    }
    pos = static_cast<UInt32>(at);
    return true;
}

bool kelString::find(char const* text, UInt32& pos) const {
    return find(text, 0, pos);
}

bool kelString::find(kelString const& text, UInt32 start, UInt32& pos) const {
    return find(text.c_str(), start, pos);
}

bool kelString::find(kelString const& text, UInt32& pos) const {
    return find(text.c_str(), 0, pos);
}

bool kelString::find(char c, UInt32 start, UInt32& pos) const {
    std::string::size_type const at =
        c == '\0' ? (start <= mText->size() ? start : std::string::npos) : mText->find(c, start);
    if (at == std::string::npos) {
        return false;
    }
    pos = static_cast<UInt32>(at);
    return true;
}

bool kelString::find(char c, UInt32& pos) const {
    return find(c, 0, pos);
}

kelString const& kelString::operator=(kelString const& other) {
    return *this = other.c_str();
}

kelString const& kelString::operator=(char const* text) {
    // The text may point into this string (self-assignment); a temporary keeps it valid.
    mText->assign(std::string(orEmpty(text)));
    return *this;
}

kelString const& kelString::operator=(char c) {
    mText->assign(1, c);
    return *this;
}

kelString const& kelString::operator+=(kelString const& text) {
    append(text);
    return *this;
}

kelString const& kelString::operator+=(char const* text) {
    append(text);
    return *this;
}

void kelString::appendGrowing(char c) {
    mText->push_back(c);
}

kelString kelString::operator+(kelString const& text) {
    *this += text;
    return *this;
}

kelString kelString::operator+(char const* text) {
    *this += text;
    return *this;
}

kelString kelString::operator+(char c) {
    *this += c;
    return *this;
}

#define KEL_STRING_COMPARISONS(OP)                                                                 \
    bool kelString::operator OP(kelString const& other) const {                                    \
        return compareTexts(c_str(), other.c_str()) OP 0;                                          \
    }                                                                                              \
    bool kelString::operator OP(char const* other) const {                                         \
        return compareTexts(c_str(), orEmpty(other)) OP 0;                                         \
    }                                                                                              \
    bool kelString::operator OP(char other) const {                                                \
        return compareWithCharacter(c_str(), other) OP 0;                                          \
    }

KEL_STRING_COMPARISONS(==)
KEL_STRING_COMPARISONS(!=)
KEL_STRING_COMPARISONS(<)
KEL_STRING_COMPARISONS(<=)
KEL_STRING_COMPARISONS(>)
KEL_STRING_COMPARISONS(>=)

#undef KEL_STRING_COMPARISONS

void kelString::serializeTo(kelISerializer& serializer) const {
    UInt32 const length = size();
    serializer.serialize(length);
    if (length != 0) {
        serializer.serialize(reinterpret_cast<const UInt8*>(mText->data()), length);
    }
}

void kelString::deserializeFrom(kelISerializer& serializer) {
    // Read aside, so that a refused read (an exception, or a serializer that delivers nothing)
    // leaves this string as it was. Bytes behind a 0 byte inside the data are dropped.
    std::string text;
    internal::ReadProgress const progress(serializer);
    if (internal::readCountedText(serializer, text, progress, 0)) {
        mText->swap(text);
    }
}

UInt32 kelString::getHashCode() const {
    if (mText->empty()) {
        return 0;
    }
    UInt32 hash = static_cast<UInt32>(static_cast<SInt32>(static_cast<signed char>((*mText)[0])));
    for (std::string::size_type i = 1; i < mText->size(); ++i) {
        hash *= static_cast<UInt32>(static_cast<SInt32>(static_cast<signed char>((*mText)[i])));
    }
    return hash;
}

UInt32 kelString::size(char const* text) {
    return text == nullptr ? 0 : static_cast<UInt32>(std::strlen(text));
}

bool kelString::equals(char const* first, char const* second) {
    if (first == nullptr || second == nullptr) {
        return first == second;
    }
    return std::strcmp(first, second) == 0;
}

kelString kelString::extractString(char const* text, UInt32 count) {
    kelString result;
    if (text == nullptr || count == 0) {
        return result;
    }
    UInt32 length = 0;
    while (length < count && text[length] != '\0') {
        ++length;
    }
    result.mText->assign(text, length);
    return result;
}

} // namespace KELKIT
