#pragma once

#include <VokLib/Document/VokUpdate.h>

#include <cstddef>
#include <vector>

/// The raw document as the format update takes it: a view of the reader's buffer, which it may
/// free.
class CUpdateBuffer : public VokUpdate::InputBuffer {
  public:
    explicit CUpdateBuffer(std::vector<char>& buffer) : bytes(buffer) {}

    /// Null when there is nothing.
    const char* GetData() const override;
    std::size_t GetSize() const override;
    void Free() override;

  private:
    std::vector<char>& bytes;
};
