#pragma once

#include <VokLib/Text/VokElementReader.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class VokObj;
class VokWorld;

/// Reads a document into a world: a stack machine over a push parser. The file streams through in
/// blocks of one mebibyte; each start tag, text and end tag goes to the object on top of the stack.
/// An old version goes through the format update where that is allowed; at the end paths become
/// links and file names take the primary form.
///
/// Everything that fails throws and abandons the load; the world is then half filled and the owner
/// discards it. One VokParse can read one document after another, on one thread.
class VokParse : public VokElementReader {
  public:
    static constexpr std::uint32_t kFirstBlock = 0x400;
    static constexpr std::uint32_t kLastBlock = 0x800;

    VokParse();
    ~VokParse();

    /// Whether an old document may be brought up to the current version; false at first.
    void SetAllowUpdate(bool allow);

    /// What the user of the worlds will look at; everything at first. What is not wanted is read
    /// past: every failure stays what it is, and asking for it later is a failure of its own.
    enum class Wanted {
        Everything,
        WhatABakeReads,  ///< no contents (VokBulk), and of custom data only what refers to others
    };
    void SetWanted(Wanted wanted) { keepsContents = wanted == Wanted::Everything; }

    /// Reads the file at `path` (as typed) into `world`, which should be new.
    void ParseFile(VokWorld& world, const std::string& path);
    /// One block of a document. `filename` may be null; with the first block it names the world.
    void ParseBuffer(VokWorld& world, const char* bytes, std::size_t size, std::uint32_t stage,
                     const char* filename);

    // For object types, while one of their parse operations runs.

    /// Makes `object` the receiver of what stands inside the current element. A second one for the
    /// same start tag throws "Attempt to push two new objects when reading start tag.".
    void PushNewObject(VokObj* object);
    VokObj* GetNewObject() const { return newObject; }
    /// Ignores the rest of the current element and everything in it.
    void Skip();

  private:
    friend class VokParseCallbacks;
    friend class SkipEvents;
    struct Machine;

    static void CheckFactories();
    void BeginDocument(VokWorld& world, const char* bytes, std::size_t size, const char* filename);
    void CheckVersion();
    void FeedBlock(const char* bytes, std::size_t size, bool last);
    void FeedParser(const char* bytes, std::size_t size, bool last);
    void BuildParser();
    void EndSkip();
    void Reset();

    VokObj* newObject = nullptr;
    std::unique_ptr<Machine> machine;
};
