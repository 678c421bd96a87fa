#pragma once

/// Page/page.html, with {{TITLE}} and {{DATA}} where they belong.
extern const char* const kPageTemplate;
