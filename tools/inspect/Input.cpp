#include "Input.h"

#include <algorithm>

std::string_view Input::at(std::uint64_t offset, std::size_t size) {
    drop(offset);
    while (end() - offset < size && append()) {
    }
    return std::string_view(m_window).substr(m_first, size);
}

void Input::drop(std::uint64_t offset) {
    if (offset >= end()) {
        m_window.clear();
        m_first = 0;
        m_source->skipTo(offset);
    } else {
        m_first += static_cast<std::size_t>(offset - m_start);
    }
    m_start = offset;
    if (m_first > m_window.size() / 2) { // so that no byte is moved more than once
        m_window.erase(0, m_first);
        m_first = 0;
    }
}

bool Input::append() {
    do {
        if (m_next.bytes.empty()) {
            m_next = m_source->read();
            if (m_next.bytes.empty()) {
                return false;
            }
        }
        auto const passed = m_start - std::min(m_start, m_next.offset);
        auto const cut = std::min<std::uint64_t>(passed, m_next.bytes.size());
        m_next.bytes.erase(0, static_cast<std::size_t>(cut));
        m_next.offset += cut;
    } while (m_next.bytes.empty());
    if (m_next.offset != end()) {
        return false;
    }
    m_window += m_next.bytes;
    m_next.bytes.clear();
    return true;
}
