#include "Support/Document.h"

std::string VersionNamespace(std::string_view version) {
    return "http://qel.example/ns/qeli/" + std::string(version) + "/qeli";
}

std::string Document(std::string_view body, const DocumentRoot& root) {
    std::string document = "<?xml version=\"1.0\" encoding=\"";
    document.append(root.encoding).append("\"?>\n<QEL xmlns=\"");
    document.append(VersionNamespace(root.version)).append("\" filenameform=\"");
    document.append(root.form).append("\"");
    if (!root.attributes.empty()) document.append(" ").append(root.attributes);
    return document.append(">\n").append(body).append("\n</QEL>\n");
}
