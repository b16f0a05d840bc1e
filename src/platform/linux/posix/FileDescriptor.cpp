#include "platform/linux/posix/FileDescriptor.h"

#include <utility>

#include <unistd.h>

namespace quorvin {

FileDescriptor::~FileDescriptor() {
    if (m_descriptor != -1) {
        ::close(m_descriptor);
    }
}

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

} // namespace quorvin
