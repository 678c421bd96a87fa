#include <VokLib/Document/VokUpdate.h>

VokUpdate::InputBuffer::~InputBuffer() = default;

VokUpdate::~VokUpdate() noexcept(false) = default;
