#include "Input.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include <Halvora/error/HLVErrorException.h>

#include "Errors.h"

using namespace Halvora;

Input::Input(std::string const& path)
    : m_file(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY)) {
    if (m_file < 0) {
        throw HLVErrorException(HLVError::create(missing, std::strerror(errno)), "");
    }
}

Input::~Input() {
    close(m_file);
}

std::string_view Input::at(std::uint64_t offset, std::size_t size) {
    do {
        auto const passed = std::min<std::uint64_t>(offset - m_start, m_window.size());
        m_window.erase(0, static_cast<std::size_t>(passed));
        m_start += passed;
    } while (m_window.size() < size && readBlock());
    return std::string_view(m_window).substr(0, size);
}

bool Input::readBlock() {
    char block[0x2000];
    ssize_t const got = read(m_file, block, sizeof block);
    if (got < 0) {
        throw HLVErrorException(
            HLVError::create(unreadable, m_start + m_window.size(), std::strerror(errno)), "");
    }
    m_window.append(block, static_cast<std::size_t>(got));
    return got != 0;
}
