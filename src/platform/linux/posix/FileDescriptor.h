#pragma once

namespace quorvin {

/// An open descriptor, closed with this object; -1 for none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;

    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

} // namespace quorvin
