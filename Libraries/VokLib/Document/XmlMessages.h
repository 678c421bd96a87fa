#pragma once

/// The XML parser's library prints nothing from here on. Holds for the thread that calls this.
void DropXmlMessages();
/// Ends that.
void ShowXmlMessages();
