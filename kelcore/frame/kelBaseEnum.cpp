#include <kelcore/frame/kelBaseEnum.h>

#include <kelcore/strings/kelString.h>

namespace KELKIT {

kelBaseEnum::kelBaseEnum() = default;

kelBaseEnum::kelBaseEnum(kelBaseEnum const&) = default;

kelBaseEnum& kelBaseEnum::operator=(kelBaseEnum const&) = default;

kelBaseEnum::~kelBaseEnum() = default;

namespace {

int indexOf(int const* values, int count, int value) {
    for (int i = 0; i < count; ++i) {
        if (values[i] == value) {
            return i;
        }
    }
    return -1;
}

} // namespace

char const* kelBaseEnum::nameOf(Table const& table, int value) {
    int const index = indexOf(table.values, table.count, value);
    return index < 0 ? "" : table.names[index];
}

int kelBaseEnum::following(Table const& table, int value) {
    int const index = indexOf(table.values, table.count, value);
    return index < 0 ? table.values[0] : table.values[(index + 1) % table.count];
}

int kelBaseEnum::preceding(Table const& table, int value) {
    int const index = indexOf(table.values, table.count, value);
    if (index < 0) {
        return table.values[0];
    }
    return table.values[index == 0 ? table.count - 1 : index - 1];
}

int kelBaseEnum::parse(Table const& table, char const* text) {
    if (text == nullptr) {
        return 0;
    }
    for (int i = 0; i < table.count; ++i) {
        if (kelString::equals(table.names[i], text)) {
            return table.values[i];
        }
    }
    for (int i = 0; i < table.count; ++i) {
        kelString upper(table.names[i]);
        upper.makeUpper();
        if (kelString::equals(upper.c_str(), text)) {
            return table.values[i];
        }
    }
    return 0;
}

int kelBaseEnum::withFlags(int value, int flags, bool enable) {
    return enable ? (value | flags) : (value & ~flags);
}

bool kelBaseEnum::hasFlags(int value, int flags) {
    return (value & flags) == flags;
}

} // namespace KELKIT
