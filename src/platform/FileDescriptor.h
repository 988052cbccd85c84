// An owned file descriptor, closed on destruction.
#pragma once

#include <unistd.h>

#include <utility>

namespace kelpa {

class FileDescriptor
{
public:
    FileDescriptor() = default;
    /// Takes ownership of the result of a system call; negative for none.
    explicit FileDescriptor(int number) : m_number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        other.close();
        return *this;
    }
    ~FileDescriptor() { close(); }

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }
    /// Gives ownership away.
    [[nodiscard]] int release() { return std::exchange(m_number, -1); }
    void close()
    {
        if (isOpen())
            ::close(std::exchange(m_number, -1));
    }

private:
    int m_number = -1;
};

} // namespace kelpa
