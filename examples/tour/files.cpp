// The machine around the program: files and folders, the renamer, the environment and the
// system, and logging into a file.

#include "tour.h"

#include <cstdio>
#include <set>
#include <string>

namespace tour {

namespace {

kelString pathIn(kelString const& folder, char const* name) {
    return kelFiles::concat(folder.c_str(), name);
}

// The names of the flags that are set, "File ReadOnly"; None, always there, is left out.
std::string attributeNames(kelFileAttributes const& attributes) {
    std::string names;
    for (int i = 0; i < attributes.getNumValues(); ++i) {
        kelFileAttributes const flag(attributes.getValues()[i]);
        if (flag != kelFileAttributes::None && attributes.isFlagsEnabled(flag.getValue())) {
            names += std::string(names.empty() ? "" : " ") + flag.toString();
        }
    }
    return names;
}

void writeFile(kelString const& path, UInt32 size, char fill) {
    kelFile file(path.c_str());
    require(file.open(kelFile::WRITE), "kelFile::open for writing returned false");
    std::string const bytes(size, fill);
    require(file.write(reinterpret_cast<unsigned char const*>(bytes.data()), size) == size,
            "kelFile::write wrote less than it was given");
}

// Prints the progress of copies and counts what deletions report done.
class ProgressPrinter : public kelEventNotifier {
public:
    void onEvent(kelEvent* event) override {
        if (event->getType() == kelEventTypes::FolderCopy) {
            auto const* copy = static_cast<kelFolderCopyEvent*>(event);
            print("folder", copy->getSourcePath(), copy->getProgress());
        } else if (event->getType() == kelEventTypes::FileCopy) {
            auto const* copy = static_cast<kelFileCopyEvent*>(event);
            print("file", copy->getSourcePath(), copy->getProgress());
        } else if (event->getType() == kelEventTypes::FileDelete) {
            auto const* deletion = static_cast<kelFileDeleteEvent*>(event);
            if (deletion->getProgress() == 1.0) {
                filesDeleted.insert(deletion->getPath());
            }
        } else if (event->getType() == kelEventTypes::FolderDelete) {
            auto const* deletion = static_cast<kelFolderDeleteEvent*>(event);
            if (deletion->getProgress() == 1.0) {
                foldersDeleted.insert(deletion->getPath());
            }
        }
    }
    std::set<std::string> filesDeleted;
    std::set<std::string> foldersDeleted;

private:
    static void print(char const* kind, char const* source, double progress) {
        std::printf("  %-6s %3.0f%%  %s\n", kind, progress * 100, shortPath(source));
    }
};

// Each item below folder with its size and attributes, then the totals.
void printListing(kelString const& folder) {
    kelListString listing;
    kelFileCriteriaDefault noDots;
    kelFiles::getFiles(folder.c_str(), listing, true, true, &noDots);
    std::printf("%s listed recursively:\n", shortPath(folder.c_str()));
    for (UInt32 i = 0; i < listing.size(); ++i) {
        char const* path = listing[i].c_str();
        kelFileAttributes const attributes = kelFiles::getItemAttributes(path);
        bool const isFolder = attributes.isFlagsEnabled(kelFileAttributes::Folder);
        std::printf("  %-32s %-10s %s\n", shortPath(path),
                    isFolder ? ""
                             : kelFiles::getUserFriendlySize(kelFiles::getFileSize(path)).c_str(),
                    attributeNames(attributes).c_str());
    }
    std::printf("%u items, %s in all\n",
                static_cast<unsigned>(kelFiles::getNumFilesInFolder(folder.c_str(), true)),
                kelFiles::getUserFriendlySize(kelFiles::getFolderSize(folder.c_str())).c_str());
}

} // namespace

void files() {
    kelString const root = scratchFolder("files");
    kelString const docs = pathIn(root, "docs");
    require(kelFiles::createFolder(pathIn(docs, "photos\\2024").c_str()), "createFolder");
    writeFile(pathIn(docs, "notes.txt"), 1200, 'n');
    writeFile(pathIn(docs, "photos\\2024\\beach.jpg"), 25000, 'b');
    writeFile(pathIn(docs, ".settings"), 40, 's');
    require(kelFiles::createFile(pathIn(docs, "empty.log").c_str(), 0), "createFile");
    // Hidden is an attribute on Windows; on POSIX it is the leading dot, and the call only
    // clears ReadOnly there.
    require(kelFiles::setFileAttributes(pathIn(docs, ".settings").c_str(),
                                        kelFileAttributes(kelFileAttributes::Hidden)) &&
                kelFiles::setFileAttributes(pathIn(docs, "notes.txt").c_str(),
                                            kelFileAttributes(kelFileAttributes::ReadOnly)),
            "setFileAttributes returned false");

    printListing(docs);
    std::printf("more friendly sizes: 1023 bytes are %s, 999999 are %s, 3 GiB are %s\n",
                kelFiles::getUserFriendlySize(1023).c_str(),
                kelFiles::getUserFriendlySize(999999).c_str(),
                kelFiles::getUserFriendlySize(3ull << 30).c_str());

    kelString const backup = pathIn(root, "backup");
    ProgressPrinter printer;
    Listening listening(&printer);
    require(kelFiles::createFolder(backup.c_str()), "createFolder");
    std::printf("copying %s into %s:\n", shortPath(docs.c_str()), shortPath(backup.c_str()));
    require(kelFiles::copyFolder(docs.c_str(), backup.c_str()), "copyFolder returned false");
    std::printf("the copy holds %u items\n", static_cast<unsigned>(kelFiles::getNumFilesInFolder(
                                                 pathIn(backup, "docs").c_str(), true)));
    // Windows refuses to delete a read-only file.
    require(kelFiles::setFileAttributes(pathIn(docs, "notes.txt").c_str(), kelFileAttributes()),
            "setFileAttributes returned false");
    require(kelFiles::deleteFolder(root.c_str()), "deleteFolder returned false");
    std::printf("deleteFolder(%s) reported %u files and %u folders deleted; it exists: %s\n",
                shortPath(root.c_str()), static_cast<unsigned>(printer.filesDeleted.size()),
                static_cast<unsigned>(printer.foldersDeleted.size()),
                yesNo(kelFiles::folderExists(root.c_str())));
}

namespace {

// Shows each old name beside its new one, marking the new names that are taken by then.
void showPreview(kelFileRenamer& renamer, kelString const& folder, kelListString const& files) {
    kelListString newNames;
    bool collisions = false;
    require(renamer.preview(newNames, collisions), "preview returned false");
    kelListString present;
    kelFiles::getFiles(folder.c_str(), present);
    std::set<std::string> taken;
    for (UInt32 i = 0; i < present.size(); ++i) {
        taken.insert(present[i].c_str());
    }
    for (UInt32 i = 0; i < files.size(); ++i) {
        std::string const oldName = files[i].c_str();
        std::string const newName = newNames[i].c_str();
        bool const clash = newName != oldName && taken.count(newName) != 0;
        taken.erase(oldName);
        taken.insert(newName);
        std::printf("  %-14s -> %s%s\n", oldName.c_str(), newName.c_str(),
                    clash ? "   <- taken" : "");
    }
    std::printf("  the renamer reports collisions: %s\n", yesNo(collisions));
}

} // namespace

void renamer() {
    kelString const folder = scratchFolder("renamer");
    kelListString photos;
    for (char const* name : {"IMG_0001.jpeg", "IMG_0002.jpeg", "IMG_0003.jpeg"}) {
        require(kelFiles::createFile(pathIn(folder, name).c_str(), 0), "createFile");
        photos.add(name);
    }
    // Not renamed, only in the way.
    require(kelFiles::createFile(pathIn(folder, "photo_002.jpg").c_str(), 0), "createFile");
    kelFileRenamer renamer;
    renamer.setFiles(folder.c_str(), photos);
    renamer.setPatternMode("photo_###.jpg");
    std::printf("pattern photo_###.jpg, previewed:\n");
    showPreview(renamer, folder, photos);
    renamer.setReplaceMode("IMG_*.jpeg", "photo_*.jpg");
    std::printf("replace IMG_*.jpeg by photo_*.jpg, previewed:\n");
    showPreview(renamer, folder, photos);
    require(renamer.rename(nullptr), "rename returned false");
    kelListString now;
    kelFileCriteriaDefault noDots;
    kelFiles::getFiles(folder.c_str(), now, false, false, &noDots);
    now.sort();
    std::printf("renamed; the folder holds:");
    for (UInt32 i = 0; i < now.size(); ++i) {
        std::printf(" %s", now[i].c_str());
    }
    std::printf("\n");
}

void environment() {
    kelString const separator = kelSystem::getPathSeparator();
    kelString lineEnd(kelSystem::getLineSeparator());
    lineEnd.replace("\r", "\\r");
    lineEnd.replace("\n", "\\n");
    std::printf("path separator %s, line separator %s\n", separator.c_str(), lineEnd.c_str());
    kelSize screen = kelSystem::getScreenResolution();
    std::printf("screen: %u x %u\n", static_cast<unsigned>(screen.getWidth()),
                static_cast<unsigned>(screen.getHeight()));
    struct Known {
        char const* name;
        kelString folder;
    } const known[] = {{"temporary (TEMP)", kelSystem::getTempFolder()},
                       {"roaming", kelSystem::getUserRoamingFolder()},
                       {"settings", kelSystem::getUserSettingsFolder()},
                       {"documents", kelSystem::getUserDocumentsFolder()},
                       {"all users' documents", kelSystem::getAllUsersDocumentsFolder()}};
    for (Known const& entry : known) {
        std::printf("%-21s %s\n", entry.name,
                    entry.folder.empty() ? "(not known here)" : entry.folder.c_str());
    }
    kelListDrive const drives = kelSystem::getDrives();
    std::printf("%u drives", static_cast<unsigned>(drives.size()));
    for (UInt32 i = 0; i < drives.size() && i < 4; ++i) {
        std::printf("%s %c: %s (%s)", i ? "," : ", the first:", drives[i].getLetter(),
                    drives[i].getType().toString(), drives[i].getName());
    }
    std::printf("\n");

    char const* const name = "KELCORE_TOUR_GREETING";
    require(kelEnv::setEnvVar(name, "hello"), "setEnvVar returned false");
    kelString value;
    require(kelEnv::getEnvVar(name, value), "getEnvVar did not find a variable just set");
    std::printf("%s=%s; expanded: %s\n", name, value.c_str(),
                kelEnv::expand("%KELCORE_TOUR_GREETING%, %KELCORE_TOUR_UNSET%").c_str());
    require(kelEnv::setEnvVar(name, ""), "setEnvVar could not remove the variable");
    std::printf("after setting it empty it is set: %s\n", yesNo(kelEnv::getEnvVar(name, value)));
}

void logging() {
    kelString const path = pathIn(scratchFolder("logging"), "tour.log");
    {
        kelFileLogger log(path.c_str(), true);
        log.printArgs("%s started\n", "tour");
        for (int step = 1; step <= 3; ++step) {
            log.printArgs("step %d of %d\n", step, 3);
        }
        log.print("done\n");
    } // the last copy closes the file
    kelConsoleLogger console;
    console.printArgs("(the console logger writes to standard output: %d + %d = %d)\n", 2, 2, 4);

    kelMemoryBuffer content;
    require(kelFiles::loadFile(path.c_str(), content), "loadFile could not read the log");
    std::printf("%s holds %u bytes:\n", shortPath(path.c_str()),
                static_cast<unsigned>(content.getSize()));
    std::string line;
    for (UInt32 i = 0; i < content.getSize(); ++i) {
        char const c = static_cast<char>(content[i]);
        line += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
        if (c == '\n') {
            std::printf("  | %s\n", line.c_str());
            line.clear();
        }
    }
    if (!line.empty()) {
        std::printf("  | %s\n", line.c_str());
    }
}

} // namespace tour
