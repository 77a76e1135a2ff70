#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <ios>
#include <iostream>
#include <string>

#include <unistd.h>

// Says how far the reading of a file is: on a terminal, once it has taken a second, in one line.
class Progress {
public:
    explicit Progress(std::string const& fileName) {
        std::error_code unknown; // a pipe has no size
        auto const size = std::filesystem::file_size(fileName, unknown);
        m_size = unknown ? 0 : static_cast<std::streamoff>(size);
    }

    ~Progress() {
        if (m_isShown) {
            std::cerr << "\r\033[K";
        }
    }

    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    void show(std::uint64_t lines, std::streamoff bytes) {
        auto const now = std::chrono::steady_clock::now();
        if (!m_isTerminal || now < m_next) {
            return;
        }
        m_next = now + std::chrono::milliseconds(100);
        m_isShown = true;
        std::cerr << "\rreading: " << lines << " lines";
        if (bytes <= m_size) {
            std::cerr << ", " << 100 * bytes / m_size << " %";
        } else {
            std::cerr << ", " << (bytes >> 20) << " MiB";
        }
        std::cerr << std::flush;
    }

private:
    std::streamoff m_size = 0;
    std::chrono::steady_clock::time_point m_next =
        std::chrono::steady_clock::now() + std::chrono::seconds(1);
    bool m_isTerminal = isatty(STDERR_FILENO) != 0;
    bool m_isShown = false;
};
