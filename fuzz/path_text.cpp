// kelFiles' path text and listing patterns against models written from its header: the
// extension empties at each dot and collects every other character on top of what it held;
// a path splits at its last backslash (".\" as the folder when there is none), and into its
// non-empty backslash-separated parts appended to a list; the parent is the folder of the path
// without one trailing backslash; concat puts one backslash between unless the left ends in one
// or is empty; a wildcard path holds '*' or '?'; expand gives one path per character of the
// first bracket group, or the path itself without a group. Outputs that the path may point
// into give the same results, and a split path joins back to itself.

#include "kelFuzz.h"

#include <kelcore/files/kelFiles.h>

using namespace KELKIT;
using kelFuzz::textsOf;

namespace {

std::string extensionModel(std::string held, std::string const& path) {
    for (char c : path) {
        if (c == '.') {
            held.clear();
        } else {
            held += c;
        }
    }
    return held;
}

void checkExtension(std::string const& path, std::string const& held) {
    kelString extension(held.c_str());
    kelFiles::getFileExtention(path.c_str(), extension);
    KEL_FUZZ_CHECK_TEXT(extensionModel(held, path), extension.c_str());
    // The path may be the extension's own text.
    kelString self(path.c_str());
    kelFiles::getFileExtention(self.c_str(), self);
    KEL_FUZZ_CHECK_TEXT(extensionModel(path, path), self.c_str());
}

void checkSplit(std::string const& path) {
    std::size_t const last = path.rfind('\\');
    std::string const folder = last == std::string::npos ? ".\\" : path.substr(0, last + 1);
    std::string const file = last == std::string::npos ? path : path.substr(last + 1);
    kelString folderName("old folder");
    kelString fileName("old file");
    kelFiles::splitPaths(path.c_str(), folderName, fileName);
    KEL_FUZZ_CHECK_TEXT(folder, folderName.c_str());
    KEL_FUZZ_CHECK_TEXT(file, fileName.c_str());
    if (last != std::string::npos) {
        KEL_FUZZ_CHECK_TEXT(path, (std::string(folderName.c_str()) + fileName.c_str()));
    }
    kelString single("old");
    kelFiles::getFileName(path.c_str(), single);
    KEL_FUZZ_CHECK_TEXT(file, single.c_str());
    kelFiles::getFolderName(path.c_str(), single);
    KEL_FUZZ_CHECK_TEXT(folder, single.c_str());
    // The path as the output's own text.
    single = path.c_str();
    kelFiles::getFolderName(single.c_str(), single);
    KEL_FUZZ_CHECK_TEXT(folder, single.c_str());

    std::string const trimmed =
        !path.empty() && path.back() == '\\' ? path.substr(0, path.size() - 1) : path;
    std::size_t const parentEnd = trimmed.rfind('\\');
    kelString parent("old");
    kelFiles::getParentName(path.c_str(), parent);
    KEL_FUZZ_CHECK_TEXT(parentEnd == std::string::npos ? ".\\" : trimmed.substr(0, parentEnd + 1),
                        parent.c_str());

    std::vector<std::string> parts = kelFuzz::nonEmptyParts(path, '\\');
    parts.insert(parts.begin(), "kept");
    kelListString list;
    list.add(kelString("kept"));
    kelFiles::splitPaths(path.c_str(), list);
    KEL_FUZZ_CHECK(textsOf(list) == parts);
}

void checkJoin(std::string const& left, std::string const& right) {
    std::string const joined =
        left.empty() ? right : left + (left.back() == '\\' ? "" : "\\") + right;
    KEL_FUZZ_CHECK_TEXT(joined, kelFiles::concat(left.c_str(), right.c_str()).c_str());
    kelString result("old");
    kelFiles::concat(left.c_str(), right.c_str(), result);
    KEL_FUZZ_CHECK_TEXT(joined, result.c_str());
    // Either side may be the result's own text.
    result = left.c_str();
    kelFiles::concat(result.c_str(), right.c_str(), result);
    KEL_FUZZ_CHECK_TEXT(joined, result.c_str());
    result = right.c_str();
    kelFiles::concat(left.c_str(), result.c_str(), result);
    KEL_FUZZ_CHECK_TEXT(joined, result.c_str());
}

void checkPatterns(std::string const& path) {
    KEL_FUZZ_CHECK(kelFiles::isWildcardPath(path.c_str()) ==
                   (path.find_first_of("*?") != std::string::npos));
    KEL_FUZZ_CHECK(!kelFiles::isWildcardPath(nullptr));

    std::vector<std::string> expected = {"kept"};
    std::size_t const open = path.find('[');
    std::size_t const close = open == std::string::npos ? open : path.find(']', open + 1);
    if (close == std::string::npos) {
        expected.push_back(path);
    } else {
        for (std::size_t i = open + 1; i < close; ++i) {
            expected.push_back(path.substr(0, open) + path[i] + path.substr(close + 1));
        }
    }
    kelListString paths;
    paths.add(kelString("kept"));
    kelFiles::expand(path.c_str(), paths);
    KEL_FUZZ_CHECK(textsOf(paths) == expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    std::string const left = input.ConsumeRandomLengthString(256).c_str();
    std::string const right = input.ConsumeRemainingBytesAsString().c_str();
    for (std::string const* path : {&left, &right}) {
        checkExtension(*path, *path == left ? right : left);
        checkSplit(*path);
        checkPatterns(*path);
    }
    checkJoin(left, right);
    checkJoin(right, left);
    return 0;
}
