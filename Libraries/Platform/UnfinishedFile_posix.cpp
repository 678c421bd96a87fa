#include <Platform/LinkTarget.h>
#include <Platform/TemporaryFile.h>
#include <Platform/UnfinishedFile.h>

#include "AccessList_posix.h"
#include "DescriptorIo_posix.h"
#include "EndingSignals_posix.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

namespace Platform {

namespace {

constexpr int kMostAttempts = 10000;
/// Here the system shows open files, also those without a name.
constexpr const char* kOpenFiles = "/proc/self/fd/";
/// What the making of a file needs.
constexpr mode_t kOwnerReadsAndWrites = S_IRUSR | S_IWUSR;

std::string FolderPart(const std::string& path) {
    const std::size_t end = path.rfind('/');
    return end == std::string::npos ? std::string() : path.substr(0, end + 1);
}

std::string FreshName(const std::string& folder, int attempt) {
    return folder + ".unfinished-" + std::to_string(getpid()) + "-" + std::to_string(attempt);
}

/// A file that stands in such a folder cannot be replaced, and the fresh name of the one that is to
/// replace it could never be removed.
bool LetsNoNameGo(const std::string& folder) {
    struct statx status;
    return statx(AT_FDCWD, folder.empty() ? "." : folder.c_str(), 0, STATX_TYPE, &status) == 0 &&
           (status.stx_attributes & STATX_ATTR_APPEND) != 0;
}

/// What says that the file may not be given away, or not to those, rather than that something is
/// wrong with the disk.
bool IsRefusalToGive(int error) {
    constexpr int kRefusals[] = {EPERM, EACCES, EINVAL, EOVERFLOW, ENOSYS, EOPNOTSUPP};
    return std::find(std::begin(kRefusals), std::end(kRefusals), error) != std::end(kRefusals);
}

/// `isGiven` tells whether it went, which the system may refuse. 0, or the system's error number.
int Give(int descriptor, uid_t owner, gid_t group, bool& isGiven) {
    int result;
    do {
        result = fchown(descriptor, owner, group);
    } while (result != 0 && errno == EINTR);
    isGiven = result == 0;
    return isGiven || IsRefusalToGive(errno) ? 0 : errno;
}

/// `hasGroup` tells whether it has it in the end.
int GiveGroup(int descriptor, gid_t group, bool& hasGroup) {
    if (const int error = Give(descriptor, static_cast<uid_t>(-1), group, hasGroup); error != 0)
        return error;
    struct stat status;
    if (fstat(descriptor, &status) != 0) return errno;
    hasGroup = status.st_gid == group;
    return 0;
}

/// Takes from the group what others have not.
mode_t LimitGroupToOthers(mode_t mode) {
    const mode_t asOthers = (mode & S_IRWXO) << 3;
    return mode & (~static_cast<mode_t>(S_IRWXG) | asOthers);
}

/// `list` is empty for a file that has to have none.
int CopyPermissions(int descriptor, const struct stat& from, const std::string& list) {
    // To give a file away is a right that few have; it then stays the user's own.
    bool isGiven = false;
    if (const int error = Give(descriptor, from.st_uid, from.st_gid, isGiven); error != 0)
        return error;
    // Another group than the old file's is not to be handed that one's rights.
    bool isGroupKept = isGiven;
    if (!isGiven)
        if (const int error = GiveGroup(descriptor, from.st_gid, isGroupKept); error != 0)
            return error;
    if (const int error =
            GiveAccessList(descriptor, isGroupKept ? list : ListLimitingGroupToOthers(list));
        error != 0)
        return error;
    // Who could write the old file as one of its group can write the new one as its owner.
    mode_t mode = isGiven ? from.st_mode & 07777 : (from.st_mode & 0777) | kOwnerReadsAndWrites;
    // The bits of the group are those of the list's mask where there is a list.
    if (!isGroupKept && list.empty()) mode = LimitGroupToOthers(mode);
    return fchmod(descriptor, mode) == 0 ? 0 : errno;
}

}  // namespace

struct UnfinishedFile::File {
    ~File() {
        if (descriptor >= 0) close(descriptor);
        if (named) unlink(named->GetName().c_str());
    }

    int LookAtReplaced(const std::string& path);
    int SetPermissions();
    int CreateIn(const std::string& inFolder, mode_t mode);
    template <class Make>
    int MakeUnderFreshName(int attempt, Make make);
    int CreateNamed(mode_t mode);
    int OpenToOwner();
    bool TakesFreeName() const;
    int CloseUnderFreeName();
    int TakeName();
    int CopyUnderName();
    int Publish();

    int descriptor = -1;
    std::string folder;
    std::string target;
    std::optional<struct stat> permissions;  // to be set in the end
    std::optional<std::string> accessList;   // of the file that is replaced
    std::optional<RemoveOnSignal> named;     // absent while the file has no name
    std::string name;
};

/// Finds out what stands at the name that is to be taken.
int UnfinishedFile::File::LookAtReplaced(const std::string& path) {
    struct stat status;
    struct stat followed;
    if (stat(path.c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
    // The system's own links lead to files that have another name by now, or none.
    if (stat(target.c_str(), &followed) != 0) return errno == ENOENT ? EBUSY : errno;
    if (followed.st_ino != status.st_ino || followed.st_dev != status.st_dev) return EBUSY;
    permissions = status;
    return ReadAccessList(path, accessList.emplace());
}

int UnfinishedFile::File::SetPermissions() {
    if (!permissions) return 0;
    std::string list;
    const int error = accessList ? 0 : ReadAccessList(descriptor, list);
    return error != 0 ? error
                      : CopyPermissions(descriptor, *permissions, accessList.value_or(list));
}

int UnfinishedFile::File::CreateIn(const std::string& inFolder, mode_t mode) {
    folder = inFolder;
    const char* const parent = folder.empty() ? "." : folder.c_str();
    if (access(kOpenFiles, X_OK) == 0)
        descriptor = open(parent, O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
    // What stands in the way of a file without a name shows here again, or it is no matter.
    if (descriptor < 0) {
        if (const int error = CreateNamed(mode); error != 0) return error;
    } else {
        name = kOpenFiles + std::to_string(descriptor);
    }
    return OpenToOwner();
}

/// For users whose mask takes that from any new file.
int UnfinishedFile::File::OpenToOwner() {
    struct stat status;
    if (fstat(descriptor, &status) != 0) return errno;
    if ((status.st_mode & kOwnerReadsAndWrites) == kOwnerReadsAndWrites) return 0;
    if (!permissions) permissions = status;
    return fchmod(descriptor, kOwnerReadsAndWrites) == 0 ? 0 : errno;
}

/// `make` makes a file of a name that is free, and gives the system's error number when it is not.
template <class Make>
int UnfinishedFile::File::MakeUnderFreshName(int attempt, Make make) {
    // A signal must not remove what another has made under this name.
    const DeferSignals untilItIsOurs;
    named.emplace(FreshName(folder, attempt));
    const int error = make(named->GetName().c_str());
    if (error != 0) named.reset();
    return error;
}

int UnfinishedFile::File::CreateNamed(mode_t mode) {
    const auto create = [this, mode](const char* fresh) {
        name = fresh;
        descriptor = open(fresh, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        return descriptor >= 0 ? 0 : errno;
    };
    for (int attempt = 0; attempt < kMostAttempts; ++attempt)
        if (const int error = MakeUnderFreshName(attempt, create); error != EEXIST) return error;
    return EEXIST;
}

/// Gives a file without a name the wanted one, where that is free: folders that let no name go take
/// a new one all the same.
bool UnfinishedFile::File::TakesFreeName() const {
    return linkat(AT_FDCWD, name.c_str(), AT_FDCWD, target.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

/// What could not be written until now must not stand there.
int UnfinishedFile::File::CloseUnderFreeName() {
    const int error = CloseWritten(std::exchange(descriptor, -1));
    if (error != 0) unlink(target.c_str());
    return error;
}

/// Gives a file without a name a fresh one.
int UnfinishedFile::File::TakeName() {
    const auto link = [this](const char* fresh) {
        const int result = linkat(AT_FDCWD, name.c_str(), AT_FDCWD, fresh, AT_SYMLINK_FOLLOW);
        return result == 0 ? 0 : errno;
    };
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        const int error = MakeUnderFreshName(attempt, link);
        if (error == 0 || error == ENOSPC || error == EDQUOT || error == EIO) return error;
        if (error != EEXIST) return CopyUnderName();
    }
    return EEXIST;
}

/// For systems that make files without a name and cannot give them one.
int UnfinishedFile::File::CopyUnderName() {
    struct stat status;
    if (fstat(descriptor, &status) != 0) return errno;
    std::string list;
    if (const int error = ReadAccessList(descriptor, list); error != 0) return error;
    const int source = std::exchange(descriptor, -1);
    int error = CreateNamed(kOwnerReadsAndWrites);
    char buffer[65536];
    for (off_t at = 0; error == 0;) {
        const ssize_t count = pread(source, buffer, sizeof buffer, at);
        if (count < 0 && errno != EINTR) error = errno;
        if (count == 0) break;
        if (count < 0) continue;
        error = WriteAll(descriptor, buffer, static_cast<std::size_t>(count));
        at += count;
    }
    close(source);
    // Writing takes some of them away.
    if (error == 0) error = CopyPermissions(descriptor, status, list);
    return error != 0 ? error : Flush(descriptor);
}

int UnfinishedFile::File::Publish() {
    // Now that all is written: it takes some of them away, and they may not allow it.
    int error = SetPermissions();
    // A crash of the machine must not leave the new name with nothing behind it.
    if (error == 0) error = Flush(descriptor);
    if (error == 0 && !named) {
        if (TakesFreeName()) return CloseUnderFreeName();
        // Another file may have come meanwhile.
        error = LetsNoNameGo(folder) ? EPERM : TakeName();
    }
    if (error != 0) return error;
    error = CloseWritten(std::exchange(descriptor, -1));
    if (error != 0) return error;
    if (rename(named->GetName().c_str(), target.c_str()) != 0) return errno;
    named.reset();
    return 0;
}

UnfinishedFile::UnfinishedFile() = default;
UnfinishedFile::~UnfinishedFile() = default;

int UnfinishedFile::CreateBeside(const std::string& path) {
    if (path.empty()) return ENOENT;
    auto creating = std::make_unique<File>();
    if (const int error = FollowLinks(path, creating->target); error != 0) return error;
    if (const int error = creating->LookAtReplaced(path); error != 0) return error;
    const std::string folder = FolderPart(creating->target);
    if (creating->permissions && LetsNoNameGo(folder)) return EPERM;
    const mode_t mode = creating->permissions ? kOwnerReadsAndWrites : 0666;
    if (const int error = creating->CreateIn(folder, mode); error != 0) return error;
    file = std::move(creating);
    return 0;
}

int UnfinishedFile::CreateTemporary() {
    auto creating = std::make_unique<File>();
    std::string folder = TemporaryFolder();
    if (folder.back() != '/') folder += '/';
    if (const int error = creating->CreateIn(folder, kOwnerReadsAndWrites); error != 0)
        return error;
    file = std::move(creating);
    return 0;
}

const std::string& UnfinishedFile::GetName() const {
    return file->name;
}

int UnfinishedFile::Write(const char* bytes, std::size_t size) {
    return WriteAll(file->descriptor, bytes, size);
}

int UnfinishedFile::Publish() {
    const std::unique_ptr<File> publishing = std::move(file);
    return publishing->Publish();
}

}  // namespace Platform
