#include "Source.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include <Halvora/error/HLVErrorException.h>

#include "Errors.h"

#if !defined(O_BINARY)
#    define O_BINARY 0 // on Windows: no line end is another in the file
#endif

using namespace Halvora;

File::File(std::string const& path)
    : m_file(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_BINARY)) {
    if (m_file < 0) {
        throw HLVErrorException(HLVError::create(missing, std::strerror(errno)), "");
    }
    m_start = lseek(m_file, 0, SEEK_CUR);
}

File::~File() {
    close(m_file);
}

Block File::read() {
    constexpr unsigned most = 0x10000;
    Block block{m_offset, std::string(most, '\0')};
    ssize_t const got = ::read(m_file, block.bytes.data(), most);
    if (got < 0) {
        throw HLVErrorException(HLVError::create(unreadable, m_offset, std::strerror(errno)), "");
    }
    block.bytes.resize(static_cast<std::size_t>(got));
    m_offset += block.bytes.size();
    return block;
}

// Some devices answer a seek with another place, and are read to the offset. Behind the last offset
// that the system knows lies nothing.
void File::skipTo(std::uint64_t offset) {
    if (m_start < 0 || offset <= m_offset) {
        return;
    }
    auto const most = static_cast<std::uint64_t>(INT64_MAX - m_start);
    auto const target = m_start + static_cast<std::int64_t>(offset > most ? most : offset);
    errno = 0;
    bool const isThere = lseek(m_file, target, SEEK_SET) == target;
    if (isThere || (errno == EINVAL && lseek(m_file, 0, SEEK_END) >= 0)) {
        m_offset = offset;
    }
}
