#include "Faults/FaultyRun.h"
#include "Support/AccessLists_posix.h"
#include "Support/OrdinaryUser.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// Who may do what with a file.
struct Permissions {
    mode_t mode = 0;
    uid_t owner = 0;
    gid_t group = 0;
    std::string list;

    bool operator==(const Permissions&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Permissions& permissions) {
    return out << std::oct << permissions.mode << std::dec << " of " << permissions.owner << ":"
               << permissions.group << " with a list of " << permissions.list.size() << " bytes";
}

Permissions PermissionsOf(const std::string& path) {
    struct stat status {};
    stat(path.c_str(), &status);
    return {status.st_mode & 07777u, status.st_uid, status.st_gid, AccessListOf(path)};
}

/// A program with arguments that makes files of "in.qeli".
struct Work {
    const char* name;
    const char* program;
    Texts arguments;
    bool hasLog = false;
    Texts outs = {"out"};  // in the order in which they are written
    std::string old = "the old content";
    bool isInPlace = false;
    bool hasAccessList = false;
};

std::ostream& operator<<(std::ostream& out, const Work& work) {
    return out << work.name;
}

const Work kBake = {"Bake", "rigbake", {"-in", "in.qeli", "-out", "out", "-ojc", "1"}};
const Work kLoggedBake = {"LoggedBake",
                          "rigbake",
                          {"-in", "in.qeli", "-out", "out", "-ojc", "1", "-vs", "-logfile", "log"},
                          true};
/// An ordinary user's, where the folder takes no other file. What is there is shorter, or longer.
const Texts kBakeInPlaceArguments = {"-in", "in.qeli", "-out", "kept/out", "-ojc", "1"};
const Work kBakeInPlace = {"BakeInPlace",     "rigbake", kBakeInPlaceArguments, false, {"kept/out"},
                           "the old content", true};
const Work kShorterBakeInPlace = {
    "ShorterBakeInPlace",   "rigbake", kBakeInPlaceArguments, false, {"kept/out"},
    std::string(9000, 'o'), true};
const Work kConversion = {
    "Conversion", "qeli", {"convert", "in.qeli", "out"}, false, {"out"}, "old", false, true};
const Work kBothForms = {"BothForms",
                         "rigbake",
                         {"-in", "in.qeli", "-out", "out", "-ojc", "1", "-bothendian"},
                         false,
                         {"outLE", "outBE"}};
/// Of a file that is not there yet.
constexpr const char* kNothing = "(nothing)";
const Work kNewFile = {"NewFile", "rigbake", kBake.arguments, false, {"out"}, kNothing};

/// A small rig with a level of detail, constraints, a driven key and texts of every kind.
constexpr const char* kRig = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<QEL xmlns="http://qel.example/ns/qeli/1_28_1/qeli" filenameform="qelirelative">
<scene><joint name="root"><rotatePivot>1 2 3</rotatePivot>
<joint name="B&#228;r"><joint name="eye &amp; lid"></joint></joint>
<joint name="hand"></joint></joint></scene>
<objset name="skelLodSet1" type="set"><member path="||root|hand" membership=""/></objset>
<animclip name="drivenKeys"><anim name="keys" target="||root|hand">
<animChannel name="rotateY" channel="rotateY" inputObject="||root" inputChannel="rotateY">
<animData interp="QELHermite" numKeys="2"><keyValues>0 1</keyValues>
<keyTimes>0 1</keyTimes><tangents>0.5 0.5</tangents></animData></animChannel></anim></animclip>
<aimConstraint name="aim" constrain="||root|B&#228;r"><target name="||root|hand" weight="1"/>
<aim>1 0 0</aim><up>0 1 0</up><globalup>0 1 0</globalup></aimConstraint>
<orientationConstraint name="turn" constrain="||root|B&#228;r|eye &amp; lid">
<target name="||root|hand" weight="0.5"/><rotEul rotOrd="zxy">1 2 3</rotEul>
<orientInterpolation>average</orientInterpolation></orientationConstraint>
<reference name="other" uri="other.qeli" namespace="o"/>
</QEL>
)";

class FaultyWork : public testing::TestWithParam<Work> {
  protected:
    void SetUp() override {
        folder.WriteFile("in.qeli", kRig);
        // New files have a list at first that one without a list must not keep.
        if (!GetParam().hasAccessList && !GetParam().isInPlace)
            SetAccessList(folder.Path(), AccessListForOneUser(), kAccessListOfNewFiles);
        if (GetParam().isInPlace) {
            if (!OrdinaryUserMayRun()) GTEST_SKIP() << "an ordinary user cannot reach the programs";
            KeepFolder();
        }
        MakeOld();
        permissions = PermissionsOfOuts();
        const FaultyResult run = Run({});
        ASSERT_EQ(run.status, 0) << run.output << run.errors;
        if (kOld == kNothing) permissions = PermissionsOfOuts();
        wanted = Contents();
        for (const std::string& content : wanted) EXPECT_NE(content, kOld);
        log = folder.ReadFile("log");
    }
    void TearDown() override {
        if (GetParam().isInPlace) chmod(folder.Path("kept").c_str(), 0755);
    }

    /// The output's folder takes no other file.
    void KeepFolder() const {
        chmod(folder.Path().c_str(), 0777);
        fs::create_directory(folder.Path("kept"));
        chmod(folder.WriteFile(GetParam().outs[0], "").c_str(), 0666);
        chmod(folder.Path("kept").c_str(), 0555);
    }

    /// What is to be replaced is another's where that can be.
    void MakeOld() const {
        constexpr uid_t kNobody = 65534;
        constexpr gid_t kItsGroup = 54321;
        for (const std::string& out : GetParam().outs) {
            if (kOld == kNothing) {
                fs::remove(folder.Path(out));
                continue;
            }
            const std::string path = folder.WriteFile(out, kOld);
            if (GetParam().isInPlace) continue;
            if (geteuid() == 0) {
                ASSERT_EQ(chown(path.c_str(), kNobody, kItsGroup), 0);
            }
            TakeAccessList(path);
            ASSERT_EQ(chmod(path.c_str(), 0640), 0);
            // Where there are no such lists the file has none.
            if (GetParam().hasAccessList) SetAccessList(path, AccessListForOneUser());
        }
    }

    FaultyResult Run(const Texts& arguments, const Fault& fault) const {
        MakeOld();
        std::optional<OrdinaryUser> user;
        if (GetParam().isInPlace) user.emplace();
        return RunWithFault(folder.Path(), GetParam().program, arguments, fault);
    }
    FaultyResult Run(const Fault& fault) const { return Run(GetParam().arguments, fault); }

    Texts Contents() const {
        Texts contents;
        for (const std::string& out : GetParam().outs)
            contents.push_back(fs::exists(folder.Path(out)) ? folder.ReadFile(out) : kNothing);
        return contents;
    }

    std::vector<Permissions> PermissionsOfOuts() const {
        std::vector<Permissions> all;
        for (const std::string& out : GetParam().outs)
            all.push_back(PermissionsOf(folder.Path(out)));
        return all;
    }

    /// Each file is whole, the old or the new one, and whose it was.
    void ExpectOldOrNew() const {
        const Texts contents = Contents();
        for (std::size_t i = 0; i < contents.size(); ++i)
            EXPECT_TRUE(contents[i] == kOld || contents[i] == wanted[i]) << GetParam().outs[i];
        ExpectPermissions();
    }

    void ExpectPermissions() const {
        for (std::size_t i = 0; i < permissions.size(); ++i) {
            const std::string path = folder.Path(GetParam().outs[i]);
            if (!fs::exists(path)) continue;
            EXPECT_EQ(PermissionsOf(path), permissions[i]) << path;
        }
    }

    Texts Leftovers() const {
        std::set<std::string> known = {"in.qeli", "log", "kept"};
        known.insert(GetParam().outs.begin(), GetParam().outs.end());
        Texts others;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder.Path()))
            if (known.count(entry.path().filename().string()) == 0)
                others.push_back(entry.path().filename().string());
        return others;
    }

    /// What holds for every run that something disturbs.
    void ExpectHonest(const FaultyResult& run, bool keepsOld = true) const {
        EXPECT_EQ(run.signal, 0);
        EXPECT_TRUE(run.status == 0 || run.status == 1) << run.status;
        EXPECT_EQ(Leftovers(), Texts{});
        if (run.status == 0 || keepsOld) {
            ExpectOldOrNew();
            // All are written for 0; the last is what a failure leaves as it was.
            EXPECT_TRUE(run.status == 0 ? Contents() == wanted : Contents().back() == kOld)
                << "status " << run.status;
        }
        ExpectPermissions();
        if (run.status == 0 && GetParam().hasLog && folder.ReadFile("log") != log) {
            EXPECT_NE(run.errors.find("WARNING: log file 'log' is not whole: "), std::string::npos);
        }
    }

    static bool Says(const FaultyResult& run, const Texts& words) {
        const std::string text = run.output + run.errors;
        for (const std::string& word : words)
            if (text.find(word) != std::string::npos) return true;
        return false;
    }

    /// The baker's word for it is the format's own.
    static bool SaysLackOfMemory(const FaultyResult& run) {
        const bool isBaker = std::string_view(GetParam().program) == "rigbake";
        return Says(run, {"Cannot allocate memory"}) || (isBaker && Says(run, {"std::bad_alloc"}));
    }

    const std::string kOld = GetParam().old;
    TemporaryFolder folder;
    Texts wanted;
    std::vector<Permissions> permissions;
    std::string log;
};

class FailedAllocation : public FaultyWork {
  protected:
    void FailEach(bool isLasting) {
        const long count = Run({Fault::Kind::Allocation}).count;
        ASSERT_GT(count, 100);
        FailFirst(count, {Fault::Kind::Allocation, 0, isLasting});
    }

    void FailFirst(long count, Fault fault) {
        for (long number = 1; number <= count && !HasFailure(); ++number) {
            SCOPED_TRACE("allocation " + std::to_string(number));
            fault.number = number;
            const FaultyResult run = Run(fault);
            ExpectHonest(run);
            if (run.status == 0) continue;
            // The last is what the system says of a thread without memory for its stack.
            EXPECT_TRUE(SaysLackOfMemory(run) || Says(run, {"Resource temporarily unavailable"}))
                << run.output << run.errors;
        }
    }
};

TEST_P(FailedAllocation, EachAlone) {
    FailEach(false);
}

TEST_P(FailedAllocation, EachWithAllBehindIt) {
    FailEach(true);
}

TEST_P(FailedAllocation, EachAheadOfTheMainFunction) {
    Fault fault;
    fault.isEarly = true;
    // What the copy to the log takes goes by the system's clock.
    const long count = Run(fault).count - Run({Fault::Kind::Allocation}).count + 10;
    ASSERT_LT(count, 100);
    FailFirst(count, fault);
    fault.isLasting = true;
    FailFirst(count, fault);
}

TEST_P(FailedAllocation, EachHundredthOfAnUpdate) {
    // The update's stylesheets take thousands, and their library is not built for a lack of memory.
    std::string old = kRig;
    old.replace(old.find("1_28_1"), 6, "1_27_1");
    folder.WriteFile("in.qeli", old);
    std::vector<std::string> arguments = GetParam().arguments;
    if (std::string(GetParam().program) == "rigbake")
        arguments.insert(arguments.end(), {"-autoupdate", "1"});
    const long count = Run(arguments, {Fault::Kind::Allocation}).count;
    ASSERT_GT(count, 1000);
    EXPECT_EQ(Contents(), wanted);
    log = folder.ReadFile("log");
    for (long number = 1; number <= count && !HasFailure(); number += 101) {
        SCOPED_TRACE("allocation " + std::to_string(number));
        const FaultyResult result =
            Run(arguments, {Fault::Kind::Allocation, number, number % 2 == 0});
        ExpectHonest(result);
        if (result.status == 0) continue;
        EXPECT_TRUE(SaysLackOfMemory(result)) << result.output << result.errors;
    }
}

class FailedLargeUpdate : public FaultyWork {};

TEST_P(FailedLargeUpdate, EndsSoonAfterMemoryDoes) {
    // The tree that a stylesheet goes on to make takes more than the reserve holds.
    std::string old =
        "<QEL xmlns=\"http://qel.example/ns/qeli/1_14_1/qeli\" filenameform=\"qelirelative\">"
        "<scene><joint name=\"root\">";
    for (int i = 0; i < 40000; ++i)
        old += "<node name=\"n" + std::to_string(i) +
               "\"><translate>0 1 2</translate><scale>1 1 1</scale></node>";
    folder.WriteFile("in.qeli", old + "</joint></scene></QEL>");
    const Texts arguments = {"-in", "in.qeli", "-out", "out", "-au", "1"};
    const FaultyResult undisturbed = Run(arguments, {Fault::Kind::Allocation});
    ASSERT_EQ(undisturbed.status, 0) << undisturbed.output;
    for (long point = 1; point <= 12 && !HasFailure(); ++point) {
        const long number = undisturbed.count * point / 13;
        SCOPED_TRACE("allocation " + std::to_string(number));
        const FaultyResult result = Run(arguments, {Fault::Kind::Allocation, number, true});
        ExpectHonest(result);
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(SaysLackOfMemory(result)) << result.output << result.errors;
    }
}

class FailedCall : public FaultyWork {
  protected:
    void FailEach(int error) {
        // The copy to the log takes as many steps as the system's clock wants.
        const long count = Run({Fault::Kind::Call}).count + 20;
        ASSERT_GT(count, 20);
        for (long number = 1; number <= count && !HasFailure(); ++number) {
            SCOPED_TRACE("call " + std::to_string(number));
            const FaultyResult run = Run({Fault::Kind::Call, number, false, error});
            // A disk that breaks while a file is written in place breaks the file.
            ExpectHonest(run, !GetParam().isInPlace);
            if (run.status == 0) continue;
            // The tests of names and the reader have words of their own, without a reason.
            EXPECT_TRUE(
                (error == ENOMEM && SaysLackOfMemory(run)) ||
                Says(run, {std::strerror(error), "is not readable.", "File open error: ",
                           "File read error: ", "Failed to open file for Biff write.",
                           "could not open 'log' for write", "is not writeable", "_fullpath failed",
                           "Failed to create folder", "Failed to retrieve current"}))
                << run.output << run.errors;
        }
    }
};

TEST_P(FailedCall, WithAFullDisk) {
    FailEach(ENOSPC);
}

TEST_P(FailedCall, WithABrokenDisk) {
    FailEach(EIO);
}

TEST_P(FailedCall, WithAnInterruption) {
    FailEach(EINTR);
}

TEST_P(FailedCall, WithASystemThatLacksMemory) {
    FailEach(ENOMEM);
}

class EndedRun : public FaultyWork {
  protected:
    void EndInFrontOfEach(int signal) {
        const long count = Run({Fault::Kind::Call}).count;
        for (long number = 1; number <= count && !HasFailure(); ++number) {
            SCOPED_TRACE("call " + std::to_string(number));
            const FaultyResult run = Run({Fault::Kind::Call, number, false, 0, signal});
            if (run.signal != signal) {
                EXPECT_EQ(run.status, 0);
            }
            ExpectOldOrNew();
            // Between its name and its place a file of a process that is killed stays.
            if (signal == SIGKILL) {
                for (const std::string& name : Leftovers()) fs::remove(folder.Path(name));
            }
            EXPECT_EQ(Leftovers(), Texts{});
        }
    }
};

TEST_P(EndedRun, ByTheUser) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) EndInFrontOfEach(signal);
}

class KilledRun : public EndedRun {};

TEST_P(KilledRun, WithoutMercy) {
    EndInFrontOfEach(SIGKILL);
}

std::string NameOf(const testing::TestParamInfo<Work>& work) {
    return work.param.name;
}

const auto kWorks = testing::Values(kBake, kLoggedBake, kConversion, kBakeInPlace, kBothForms);
INSTANTIATE_TEST_SUITE_P(Of, FailedLargeUpdate, testing::Values(kBake), NameOf);
INSTANTIATE_TEST_SUITE_P(Of, FailedAllocation, kWorks, NameOf);
INSTANTIATE_TEST_SUITE_P(Of, FailedCall, kWorks, NameOf);
INSTANTIATE_TEST_SUITE_P(OfAShorter, FailedCall, testing::Values(kShorterBakeInPlace), NameOf);
INSTANTIATE_TEST_SUITE_P(OfA, FailedCall, testing::Values(kNewFile), NameOf);
INSTANTIATE_TEST_SUITE_P(Of, EndedRun, kWorks, NameOf);
INSTANTIATE_TEST_SUITE_P(OfA, EndedRun, testing::Values(kNewFile), NameOf);
INSTANTIATE_TEST_SUITE_P(OfA, KilledRun, testing::Values(kNewFile), NameOf);
INSTANTIATE_TEST_SUITE_P(Of, KilledRun,
                         testing::Values(kBake, kLoggedBake, kConversion, kBothForms), NameOf);

}  // namespace
