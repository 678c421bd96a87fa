#include "FileName_win32.h"

#include <gtest/gtest.h>

namespace {

using Platform::HidesDevice;
using Platform::NamesStream;

TEST(NamesStream, AColonBehindTheDriveIsOne) {
    EXPECT_TRUE(NamesStream("a.bin:x"));
    EXPECT_TRUE(NamesStream("C:\\a.bin:x"));
    EXPECT_TRUE(NamesStream("\\\\?\\C:\\a.bin:x"));
    EXPECT_TRUE(NamesStream("//./C:/a.bin:x"));
}

TEST(NamesStream, TheDrivesColonIsNone) {
    for (const char* const name : {"a.bin", "C:\\a.bin", "C:a.bin", "\\\\?\\C:\\a.bin",
                                   "//./C:/a.bin", "\\\\server\\share\\a.bin"})
        EXPECT_FALSE(NamesStream(name)) << name;
}

TEST(HasShortenedFolder, DotsAndBlanksAtTheEndOfAFoldersNameAreLeftOut) {
    for (const char* const name : {"a.\\b", "a /b", "C:\\a\\b...\\c", "\\\\?\\C:\\a.\\b",
                                   "\\\\.\\C:\\a \\b\\c", "..\\a../b"})
        EXPECT_TRUE(Platform::HasShortenedFolder(name)) << name;
    for (const char* const name : {"a", "b.", "C:\\a.b\\.c\\d ", "\\\\.\\C:\\a\\b",
                                   "\\\\?\\C:\\a\\b.", "..\\.\\a/../b", "\\\\server\\share\\a"})
        EXPECT_FALSE(Platform::HasShortenedFolder(name)) << name;
}

TEST(HasShortenedFolder, InAFullNameParentsComeOfLongerNames) {
    for (const char* const name : {"C:\\a\\..\\b", "C:\\.\\b", "C:\\a.\\b"})
        EXPECT_TRUE(Platform::HasShortenedFolderInFull(name)) << name;
    for (const char* const name : {"C:\\a\\b..", "\\\\.\\C:\\..a\\b", "\\\\server\\share\\a"})
        EXPECT_FALSE(Platform::HasShortenedFolderInFull(name)) << name;
}

TEST(HidesDevice, WithAnEndingOrAFolderADeviceLooksLikeAFile) {
    for (const char* const name : {"nul.bin", "sub/nul.bin", "sub\\NUL", "C:nul", "C:\\con.svg",
                                   "con.svg", "CONOUT$.txt", "nul ", "nul."})
        EXPECT_TRUE(HidesDevice(name)) << name;
}

TEST(HidesDevice, LinesAndPrintersLookLikeFilesInAnyCase) {
    for (const char* const name : {"aux", "PRN", "com1", "LPT1.txt"})
        EXPECT_TRUE(HidesDevice(name)) << name;
}

TEST(HidesDevice, WhatSaysSoHidesNothing) {
    for (const char* const name :
         {"NUL", "nul", "CON", "conin$", "CONOUT$", "\\\\.\\nul", "//./nul"})
        EXPECT_FALSE(HidesDevice(name)) << name;
}

TEST(HidesDevice, FilesDoNot) {
    for (const char* const name :
         {"", "null.bin", "sub/annul", "auxiliary.qeli", "com0", "nul/a.bin", "\\\\?\\C:\\nul.bin"})
        EXPECT_FALSE(HidesDevice(name)) << name;
}

}  // namespace
