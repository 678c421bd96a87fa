#include "Document/UpdateBuffer.h"

const char* CUpdateBuffer::GetData() const {
    return bytes.empty() ? nullptr : bytes.data();
}

std::size_t CUpdateBuffer::GetSize() const {
    return bytes.size();
}

void CUpdateBuffer::Free() {
    std::vector<char>().swap(bytes);
}
