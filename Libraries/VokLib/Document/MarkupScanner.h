#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Reads ahead of the parser to keep what the parser does not bound: the attributes of one tag,
/// which it compares each with all before, and the bytes of one piece of markup, which it holds in
/// memory and looks through again with every block. It also tells where a block can be cut: between
/// pieces of markup, where the parser never has to guess whether it has seen a whole one.
///
/// The bytes are in any encoding in which ASCII stands for itself. On text that is not well formed
/// it may see other markup than the parser; the parser then refuses the text.
class MarkupScanner {
  public:
    /// Reads on in the document. Returns how many of these bytes stand in front of the first markup
    /// that they leave incomplete; 0 also when that began earlier. Brackets at the end of a text,
    /// two at most, count as incomplete. When a limit is met it is where the offending markup
    /// begins.
    std::size_t Scan(const char* bytes, std::size_t size);

    /// A text without markup, in bytes from the beginning of a block.
    struct LongText {
        std::size_t begin;
        std::size_t end;
    };
    /// The longer texts of the last block; text in a comment or the like is none.
    const std::vector<LongText>& GetLongTexts() const { return longTexts; }

    /// What was exceeded, in words; null as long as no limit was met. Not to be scanned on behind
    /// it.
    const std::string* GetExceeded() const { return exceeded.empty() ? nullptr : &exceeded; }

  private:
    enum class State : std::uint8_t {
        Text,
        Opened,       // behind "<"
        Declaration,  // behind "<!"
        Tag,          // a start tag, outside quotes
        Quoted,       // an attribute's value
        Plain,        // up to the next ">"
        Instruction,  // up to "?>"
        Comment,      // up to "-->"
        CData,        // up to "]]>"
        Doctype,      // a document type, outside quotes
        DoctypeQuoted,
        DoctypeInstruction,
        DoctypeComment,
    };

    const char* Step(const char* p, const char* end);
    const char* ScanTag(const char* p, const char* end);
    const char* ScanQuoted(const char* p, const char* end, State behind);
    const char* ScanDeclaration(const char* p);
    const char* ScanUntil(const char* p, const char* end, const char* closing, std::size_t atLeast,
                          State behind);
    const char* ScanDoctype(const char* p, const char* end);
    void Finish(const char* behind);
    bool CheckBytes(std::size_t count);
    /// The place of `p` counted from the beginning of the markup.
    std::size_t IndexInMarkup(const char* p) const {
        return bytesBefore + static_cast<std::size_t>(p - from);
    }
    char ByteBefore(const char* p, std::size_t distance) const;

    State state = State::Text;
    char quote = 0;
    bool inSubset = false;        // inside the brackets of a document type
    std::size_t attributes = 0;   // of the tag in hand
    std::size_t choices = 0;      // of the document type in hand
    std::size_t bytesBefore = 0;  // of the markup in hand, in the blocks before this one
    std::size_t partBegin = 0;    // of a comment or instruction in a document type
    const char* first = nullptr;  // of the block in hand
    const char* from = nullptr;   // of the markup in hand, or of the block where it began earlier
    bool onlyTags = false;        // in the block in hand: no comments, instructions and the like
    char lastBytes[4] = {};       // of the blocks before this one
    std::string word;             // behind "<!"
    std::string exceeded;
    std::vector<LongText> longTexts;
};
