#include <Platform/LinkTarget.h>
#include <Platform/TemporaryFile.h>
#include <Platform/UnfinishedFile.h>

#include "EndingEvents_win32.h"
#include "ErrorNumber_win32.h"
#include "FileName_win32.h"
#include "HandleIo_win32.h"
#include "OwnedHandle_win32.h"
#include "Permissions_win32.h"
#include "WideText_win32.h"

#include <cerrno>
#include <charconv>
#include <functional>
#include <optional>
#include <utility>

namespace Platform {

namespace {

constexpr unsigned int kMostAttempts = 1000;
/// The characters of the longest name that this system's calls take.
constexpr std::size_t kLongestName = MAX_PATH - 1;
/// What a folder in which files can be made at all leaves the name of a file.
constexpr std::size_t kShortName = 11;
/// Scanners and indexers open a new file for a moment; a name that they keep busy is tried again.
constexpr int kMostTries = 20;
constexpr DWORD kPauseBetweenTries = 25;

/// A number in few characters.
std::string ShortText(unsigned long number) {
    char digits[16];
    return {digits, std::to_chars(digits, digits + sizeof digits, number, 36).ptr};
}

/// A name in the folder for a file that is not finished; a short one where the usual one would be
/// longer than the system takes.
std::string FreshName(const std::string& folder, std::size_t folderLength, unsigned int attempt) {
    const std::string name =
        ".unfinished-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(attempt);
    if (folderLength + name.size() <= kLongestName) return folder + name;
    return folder + ".~" + ShortText(GetCurrentProcessId()) + ShortText(attempt);
}

/// How many of the system's characters the full name of a folder, or of the working directory, has
/// with the separator at its end.
std::size_t FullLength(const std::string& folder) {
    const DWORD size =
        GetFullPathNameW(WideText(folder.empty() ? "./" : folder).c_str(), 0, nullptr, nullptr);
    return size > 0 ? size - 1 : 0;
}

std::string FolderPart(const std::string& path) {
    return path.substr(0, path.find_last_of("/\\:") + 1);
}

HANDLE CreateFresh(const std::string& name, Permissions& permissions) {
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES),
                                   permissions.empty() ? nullptr : permissions.data(), FALSE};
    return CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_DELETE, &attributes, CREATE_NEW,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// Tries a call of the system until nobody keeps a name busy, or for half a second.
int Persist(const std::function<BOOL()>& call) {
    for (int tries = 1; !call(); ++tries) {
        const int error = LastErrorNumber();
        if (error != EACCES || tries == kMostTries) return error;
        Sleep(kPauseBetweenTries);
    }
    return 0;
}

}  // namespace

struct UnfinishedFile::File {
    ~File() {
        handle.Reset();
        if (named) Persist([this] { return DeleteFileA(named->GetName().c_str()); });
    }

    int CreateIn(const std::string& folder, Permissions permissions);
    int Publish();

    OwnedHandle handle;
    std::string target;
    std::optional<RemoveOnEvent> named;
};

int UnfinishedFile::File::CreateIn(const std::string& folder, Permissions permissions) {
    const std::size_t folderLength = FullLength(folder);
    if (folderLength + kShortName > kLongestName) return ENAMETOOLONG;
    for (unsigned int attempt = 0; attempt < kMostAttempts; ++attempt) {
        // None comes behind the back of an event that is already removing what is unfinished.
        const DeferEvents untilItIsThere;
        named.emplace(FreshName(folder, folderLength, attempt));
        handle.Reset(CreateFresh(named->GetName(), permissions));
        if (handle.IsValid()) return 0;
        const int error = LastErrorNumber();
        named.reset();
        if (error != EEXIST) return error;
    }
    return EEXIST;
}

int UnfinishedFile::File::Publish() {
    // A crash of the machine must not leave the new name with nothing behind it.
    if (const int error = Flush(handle.Get()); error != 0) return error;
    handle.Reset();
    const int error = Persist([this] {
        return MoveFileExA(named->GetName().c_str(), target.c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    });
    if (error == 0) named.reset();
    return error;
}

UnfinishedFile::UnfinishedFile() = default;
UnfinishedFile::~UnfinishedFile() = default;

int UnfinishedFile::CreateBeside(const std::string& path) {
    if (path.empty()) return ENOENT;
    // No file beside could become one.
    if (NamesStream(path)) return EINVAL;
    auto creating = std::make_unique<File>();
    if (const int error = FollowLinks(path, creating->target); error != 0) return error;
    const DWORD attributes = GetFileAttributesA(creating->target.c_str());
    const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
    if (!isThere && LastErrorNumber() == EINVAL) return EINVAL;
    Permissions permissions;
    int error = isThere ? ReadPermissions(creating->target, permissions) : 0;
    if (error == 0)
        error = creating->CreateIn(FolderPart(creating->target),
                                   permissions.empty() ? permissions : UserAlone());
    if (error == 0) error = SetPermissions(creating->named->GetName(), permissions);
    if (error != 0) return error;
    if (isThere) SetFileAttributesA(creating->named->GetName().c_str(), attributes);
    file = std::move(creating);
    return 0;
}

int UnfinishedFile::CreateTemporary() {
    auto creating = std::make_unique<File>();
    if (const int error = creating->CreateIn(TemporaryFolder(), UserAlone()); error != 0)
        return error;
    file = std::move(creating);
    return 0;
}

const std::string& UnfinishedFile::GetName() const {
    return file->named->GetName();
}

int UnfinishedFile::Write(const char* bytes, std::size_t size) {
    return WriteAll(file->handle.Get(), bytes, size);
}

int UnfinishedFile::Publish() {
    const std::unique_ptr<File> publishing = std::move(file);
    return publishing->Publish();
}

}  // namespace Platform
