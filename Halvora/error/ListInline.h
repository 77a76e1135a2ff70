#ifndef HALVORA_ERROR_LISTINLINE_H // the two headers include each other: no `#pragma once`
#define HALVORA_ERROR_LISTINLINE_H

// The functions of List.h that are inline for speed.

#include <Halvora/error/List.h>

namespace Halvora {

inline void HLVError::List::letGo(std::unique_ptr<HLVError>& error) noexcept {
    if (error != nullptr && error->getCode() != 0) {
        static_cast<void>(error.release());
    }
    error.reset();
}

} // namespace Halvora

// The steps of a walk. A call that the compiler does not put in place goes to the copy in the
// library, as those of older programs do. So does every call in a program with the standard
// library's debug mode, whose positions are of another type.
#if defined(HALVTYPES_LIST_STEPS)
#    define HALVTYPES_STEP // in the library: the copy itself
#elif defined(__GNUC__) && !defined(_WIN32) && !defined(_GLIBCXX_DEBUG) && \
    !defined(_LIBCPP_DEBUG) && !defined(_LIBCPP_ENABLE_DEBUG_MODE)
#    define HALVTYPES_LIST_STEPS
#    define HALVTYPES_STEP [[gnu::gnu_inline]] inline
#endif

#if defined(HALVTYPES_LIST_STEPS)

// NOLINTBEGIN(misc-definitions-in-headers): what List.cpp includes it defines

#    if defined(__clang__)
#        pragma clang diagnostic push
#        pragma clang diagnostic ignored "-Wgnu-inline-cpp-without-extern"
#    endif

namespace Halvora {

HALVTYPES_STEP bool HLVError::List::iterator::begin() const noexcept {
    return *m_position == m_list->begin();
}

HALVTYPES_STEP bool HLVError::List::iterator::end() const noexcept {
    return *m_position == m_list->end();
}

HALVTYPES_STEP HLVError* HLVError::List::iterator::operator*() const noexcept {
    return end() ? nullptr : **m_position;
}

HALVTYPES_STEP HLVError::List::iterator& HLVError::List::iterator::operator++() noexcept {
    *m_position = end() ? m_list->begin() : std::next(*m_position);
    return *this;
}

HALVTYPES_STEP HLVError::List::iterator& HLVError::List::iterator::operator--() noexcept {
    *m_position = begin() ? m_list->end() : std::prev(*m_position);
    return *this;
}

HALVTYPES_STEP bool HLVError::List::const_iterator::begin() const noexcept {
    return *m_position == m_list->begin();
}

HALVTYPES_STEP bool HLVError::List::const_iterator::end() const noexcept {
    return *m_position == m_list->end();
}

HALVTYPES_STEP HLVError const* HLVError::List::const_iterator::operator*() const noexcept {
    return end() ? nullptr : **m_position;
}

HALVTYPES_STEP HLVError::List::const_iterator&
HLVError::List::const_iterator::operator++() noexcept {
    *m_position = end() ? m_list->begin() : std::next(*m_position);
    return *this;
}

HALVTYPES_STEP HLVError::List::const_iterator&
HLVError::List::const_iterator::operator--() noexcept {
    *m_position = begin() ? m_list->end() : std::prev(*m_position);
    return *this;
}

} // namespace Halvora

#    if defined(__clang__)
#        pragma clang diagnostic pop
#    endif

// NOLINTEND(misc-definitions-in-headers)

#endif

#undef HALVTYPES_LIST_STEPS
#undef HALVTYPES_STEP

#endif
