#include "Update/OldDocument.h"

#include "Document/DocumentFeed.h"

#include <QelTools/Exception.h>
#include <VokLib/Base/VokLimits.h>
#include <VokLib/Tree/ThrowVokException.h>

#include "Update/TreeParser.h"

#include <algorithm>
#include <string>

namespace {

constexpr std::size_t kPieceBytes = 0x100000;

}  // namespace

OldDocument ParseOldDocument(const char* bytes, std::size_t size) {
    if (size > VokLimits::kMaxOldDocumentBytes)
        ThrowVokException("Document limit exceeded: more than " +
                          std::to_string(VokLimits::kMaxOldDocumentBytes) +
                          " bytes in a document of an old version");
    TreeParser parser(size);
    DocumentFeed feed(parser);
    for (std::size_t at = 0, left = size;; at += kPieceBytes) {
        const std::size_t piece = std::min(left, kPieceBytes);
        left -= piece;
        const int code = feed.Feed(bytes + at, piece, left == 0);
        if (code != 0)
            ThrowTextFault("Failed to parse out of date .qeli document. Libxml2 parse error: " +
                               std::to_string(code),
                           parser.GetPlace());
        if (left == 0) break;
    }
    OldDocument document{parser.TakeTree(), parser.GetDepth()};
    if (document.tree == nullptr)
        QelTools::Common::ThrowException("Failed to parse out of date .qeli document.");
    return document;
}
