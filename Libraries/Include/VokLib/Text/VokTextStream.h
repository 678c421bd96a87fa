#pragma once

class VokTextReader;

/// Reads a text that is not kept, while it comes in. Begun by VokTextReader::StreamText.
class VokTextStream {
  public:
    virtual ~VokTextStream() = default;
    /// Behind the cursor stands what came since the last call; it ends with a whole word. What is
    /// not read now is gone.
    virtual void Take(VokTextReader& text) = 0;
};
