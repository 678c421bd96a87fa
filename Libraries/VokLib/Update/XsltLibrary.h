#pragma once

/// The stylesheet processor's library with the EXSLT math functions, up as long as this lives; for
/// the thread that makes it. Neither it nor the parser prints anything.
class XsltLibrary {
  public:
    XsltLibrary();
    ~XsltLibrary();
    XsltLibrary(const XsltLibrary&) = delete;
    XsltLibrary& operator=(const XsltLibrary&) = delete;
};
