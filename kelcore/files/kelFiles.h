#ifndef KELCORE_FILES_KELFILES_H
#define KELCORE_FILES_KELFILES_H

#include <kelcore/containers/kelLists.h>
#include <kelcore/files/kelFileCriteria.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelFileAttributes.h>
#include <kelcore/frame/kelFileSizeUnit.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// Static operations on paths: path text, existence, attributes, listings, sizes and whole-file
// reads. Paths are narrow text with the backslash as separator on every platform; the forward
// slash is an ordinary character to the path text operations. Nothing here throws: a failure
// gives false, 0, an empty result or an untouched output, as each operation says.
//
// Paths handed to the system are at most 10,239 characters long; a longer one is refused
// (false, 0 or nothing listed) before any system call. The path text operations take any
// length. None of these operations changes the process's working folder.
//
// A file is an item that is not a folder: a symbolic link is a file, dangling or not, and a
// link to a folder is not a folder. A folder exists when this process can enter it. On POSIX
// an item is Hidden when its name starts with a dot ("." and ".." aside) and ReadOnly when its
// owner may not write it; Archive and System never occur there.
class KELCORE_API kelFiles {
public:
    kelFiles();
    kelFiles(kelFiles const& other);
    kelFiles& operator=(kelFiles const& other);
    virtual ~kelFiles();

    // The ten characters no file name may hold: < > \ : " * ? | CR LF. Static text.
    static char const* getFileInvalidCharacters();

    // Existence and attributes.
    static bool fileExists(char const* path);
    static bool folderExists(char const* path);
    // None alone when the path is neither file nor folder; else None plus File or Folder and
    // the flags that apply. CurrentFolder and ParentFolder only for the exact paths "." and "..".
    static kelFileAttributes getItemAttributes(char const* path);
    // Applies Archive, Hidden, ReadOnly and System and clears the ones not given; other flags
    // are ignored. POSIX applies ReadOnly only (Hidden is the name, Archive and System do not
    // exist): setting it clears every write bit, clearing it gives the owner write access back.
    // A symbolic link has no attributes of its own there and is refused.
    static bool setFileAttributes(char const* path, kelFileAttributes const& attributes);
    // The size of the file when opened for reading; 0 for a folder or what cannot be opened.
    static UInt64 getFileSize(char const* path);
    // The working folder, with no trailing backslash added; empty if the system cannot tell.
    static kelString getCurrentFolder();

    // Listings. Symbolic links are listed as files and never entered. On POSIX a name holding a
    // backslash is left out: no library path could name it.
    //
    // Replaces files with the bare names of folder's entries, "." and ".." included, unfiltered.
    // Empty when folder cannot be listed or is longer than 2,043 characters (the listing pattern
    // "<folder>\*.*" must fit in 2,048).
    static void getFiles(char const* folder, kelListString& files);
    // Adds to files, depth first, each folder's line before its content. Each entry's full path
    // is concat(folder, name); criteria (null accepts everything) sees that path and the
    // entry's attributes, and a refused entry is neither added nor entered. "." and ".." are
    // never entered. An empty folder text lists nothing (it does not mean the working folder);
    // a folder whose full path is longer than 10,239 characters is listed but not entered.
    static void getFiles(char const* folder, kelListString& files, bool recursive, bool fullPaths,
                         kelFileCriteria* criteria);
    // The names a listing with kelFileCriteriaDefault gives (sub-folders count, "." and ".."
    // do not).
    static UInt32 getNumFilesInFolder(char const* folder, bool recursive);
    // The sum of getFileSize over the recursive listing, in 32 bits that wrap; 0 when the
    // folder does not exist.
    static UInt32 getFolderSize(char const* folder);

    // Text reads, in text mode: each line end arrives as one line feed on every platform. A
    // line is read in chunks of at most 10,239 characters; every line feed is removed.
    //
    // The position of the first line holding text, counted from offset (the byte it starts
    // reading at) with one character for each line end and for each chunk of a longer line,
    // plus the place in the line. 0 when not found or the file cannot be opened, so a match at
    // position 0 looks like none.
    static UInt32 find(char const* path, char const* text);
    static UInt32 find(char const* path, UInt32 offset, char const* text);
    // The number of chunks read: a last line without a line feed counts, a long line counts
    // once per chunk.
    static UInt32 getLinesInFile(char const* path);
    // Replaces lines with the chunks; an empty line gives an empty entry.
    static void getTextFileContent(char const* path, kelListString& lines);
    // The file's bytes up to the first zero byte; content is unchanged on failure.
    static void getTextFileContent(char const* path, kelString& content);
    // As loadFile.
    static void getTextFileContent(char const* path, kelMemoryBuffer& content);
    // The whole file (its size cut to 32 bits). False, with content empty, for an empty file or
    // one that cannot be read whole.
    static bool loadFile(char const* path, kelMemoryBuffer& content);

    // Sizes as text: "1023 bytes", "1.00 KB". The unit changes at 1,000 of the unit at hand, so
    // "0.97 MB" occurs; the two decimals are truncated, never rounded up.
    static kelString getUserFriendlySize(UInt64 size);
    static kelString getUserFriendlySize(UInt64 size, kelFileSizeUnit unit);

    // Changes.
    //
    // Gives a file, folder or link a new path. A name that is taken is refused on every
    // platform (false, both items untouched); a link is renamed itself, never its target.
    static bool rename(char const* oldPath, char const* newPath);

    // Path text.
    //
    // Empties extension at each dot and appends every other character, without clearing it
    // first: "a.b\c" gives "b\c", and a path without a dot is appended whole.
    static void getFileExtention(char const* path, kelString& extension);
    // folderName: up to and including the last backslash, or ".\" when there is none;
    // fileName: the rest (empty for a path that ends in a backslash).
    static void splitPaths(char const* path, kelString& folderName, kelString& fileName);
    // Appends the backslash-separated parts, empty parts dropped, without clearing parts.
    static void splitPaths(char const* path, kelListString& parts);
    static void getFileName(char const* path, kelString& fileName);
    static void getFolderName(char const* path, kelString& folderName);
    // The folder name of the path without one trailing backslash.
    static void getParentName(char const* path, kelString& parentName);
    // left, a backslash unless left ends in one, then right as it is. An empty left gives right
    // alone, so that nothing is ever made to start at the root by accident.
    static void concat(char const* left, char const* right, kelString& result);
    static kelString concat(char const* left, char const* right);
    // Holds '*' or '?'.
    static bool isWildcardPath(char const* path);
    // Appends one path per character of the first bracket group, the group replaced by that
    // character; without a group, the path itself. Later groups stay as text; "[]" gives none.
    static void expand(char const* path, kelListString& paths);
};

} // namespace KELKIT

#endif
