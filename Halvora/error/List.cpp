#include <Halvora/error/List.h>

#include <algorithm>
#include <utility>

namespace Halvora {

namespace {

// The steps of the ring, for both kinds of iterator.
template <typename Entries, typename Position>
void stepForward(Entries& entries, Position& position) noexcept {
    if (position == entries.end()) {
        position = entries.begin();
    } else {
        ++position;
    }
}

template <typename Entries, typename Position>
void stepBack(Entries& entries, Position& position) noexcept {
    if (position == entries.begin()) {
        position = entries.end();
    } else {
        --position;
    }
}

template <typename Entries, typename Position>
HLVError* entryAt(Entries& entries, Position const& position) noexcept {
    return position == entries.end() ? nullptr : *position;
}

bool isTaken(HLVError const* error) noexcept {
    return HLVError::isError(error) || HLVError::isWarning(error);
}

// The list has the holder's error now, or refuses it: then nobody else wants it.
void emptyHolder(HLVError::Holder& holder) noexcept {
    HLVError const* const error = holder.extractError();
    if (!isTaken(error)) {
        delete error;
    }
}

} // namespace

HLVError::List::List() : m_entries(new std::list<HLVError*>) {}

// Delegate, so that the destructor runs when the entry finds no memory.
HLVError::List::List(HLVError* error) : List() {
    add(error);
}

HLVError::List::List(Holder& holder) : List() {
    add(holder);
}

HLVError::List::~List() {
    clear();
    delete m_entries;
}

bool HLVError::List::add(HLVError* error) {
    if (!isTaken(error)) {
        return false;
    }
    m_entries->push_back(error);
    count(*error, 1);
    return isError(error);
}

bool HLVError::List::add(Holder& holder) {
    bool const isAnError = add(holder.getError());
    emptyHolder(holder);
    return isAnError;
}

bool HLVError::List::add(List& other) noexcept {
    if (this == &other) {
        return false;
    }
    bool const hasErrors = other.m_errorCount > 0;
    m_entries->splice(m_entries->end(), *other.m_entries);
    m_errorCount += std::exchange(other.m_errorCount, 0);
    m_warningCount += std::exchange(other.m_warningCount, 0);
    return hasErrors;
}

void HLVError::List::clear() noexcept {
    for (HLVError* error : *m_entries) {
        delete error;
    }
    m_entries->clear();
    m_errorCount = 0;
    m_warningCount = 0;
}

int HLVError::List::getCount() const noexcept {
    return static_cast<int>(m_entries->size());
}

HLVError* HLVError::List::getFirstError() const noexcept {
    auto const found = std::find_if(m_entries->begin(), m_entries->end(), isError);
    return found == m_entries->end() ? nullptr : *found;
}

HLVError* HLVError::List::getLastError() const noexcept {
    auto const found = std::find_if(m_entries->rbegin(), m_entries->rend(), isError);
    return found == m_entries->rend() ? nullptr : *found;
}

HLVError::List::iterator HLVError::List::begin() {
    return iterator(m_entries, m_entries->begin());
}

HLVError::List::iterator HLVError::List::end() {
    return iterator(m_entries, m_entries->end());
}

HLVError::List::const_iterator HLVError::List::begin() const {
    return const_iterator(m_entries, m_entries->begin());
}

HLVError::List::const_iterator HLVError::List::end() const {
    return const_iterator(m_entries, m_entries->end());
}

void HLVError::List::extract(iterator& position, Holder& holder) noexcept {
    if (HLVError* const error = unlink(position)) {
        holder.setError(error);
    }
}

void HLVError::List::remove(iterator& position) noexcept {
    delete unlink(position);
}

void HLVError::List::replace(iterator& position, HLVError* error) {
    if (standsAtEntry(position) && isTaken(error)) {
        m_entries->insert(*position.m_position, error);
        count(*error, 1);
    }
    remove(position);
}

void HLVError::List::replace(iterator& position, Holder& holder) {
    if (!standsAtEntry(position)) {
        return;
    }
    replace(position, holder.getError());
    emptyHolder(holder);
}

void HLVError::List::count(HLVError const& error, int change) noexcept {
    (isError(&error) ? m_errorCount : m_warningCount) += change;
}

// Takes the entry out of the list and leaves the position at the end; null if it stood at none.
HLVError* HLVError::List::unlink(iterator& position) noexcept {
    if (!standsAtEntry(position)) {
        return nullptr;
    }
    HLVError* const error = **position.m_position;
    m_entries->erase(*position.m_position);
    *position.m_position = m_entries->end();
    count(*error, -1);
    return error;
}

bool HLVError::List::standsAtEntry(iterator const& position) const noexcept {
    return position.m_list == m_entries && !position.end();
}

HLVError::List::iterator::iterator(std::list<HLVError*>* list,
                                   std::list<HLVError*>::iterator position)
    : m_list(list), m_position(new std::list<HLVError*>::iterator(position)) {}

HLVError::List::iterator::iterator(iterator const& other)
    : iterator(other.m_list, *other.m_position) {}

HLVError::List::iterator& HLVError::List::iterator::operator=(iterator const& other) {
    auto* const position = new std::list<HLVError*>::iterator(*other.m_position);
    delete std::exchange(m_position, position);
    m_list = other.m_list;
    return *this;
}

HLVError::List::iterator::~iterator() {
    delete m_position;
}

bool HLVError::List::iterator::begin() const noexcept {
    return *m_position == m_list->begin();
}

bool HLVError::List::iterator::end() const noexcept {
    return *m_position == m_list->end();
}

HLVError* HLVError::List::iterator::operator*() const noexcept {
    return entryAt(*m_list, *m_position);
}

HLVError::List::iterator& HLVError::List::iterator::operator++() noexcept {
    stepForward(*m_list, *m_position);
    return *this;
}

HLVError::List::iterator& HLVError::List::iterator::operator--() noexcept {
    stepBack(*m_list, *m_position);
    return *this;
}

bool HLVError::List::iterator::operator==(iterator const& other) const noexcept {
    return m_list == other.m_list && *m_position == *other.m_position;
}

bool HLVError::List::iterator::operator==(const_iterator const& other) const noexcept {
    return other == *this;
}

HLVError::List::const_iterator::const_iterator(std::list<HLVError*> const* list,
                                               std::list<HLVError*>::const_iterator position)
    : m_list(list), m_position(new std::list<HLVError*>::const_iterator(position)) {}

HLVError::List::const_iterator::const_iterator(const_iterator const& other)
    : const_iterator(other.m_list, *other.m_position) {}

HLVError::List::const_iterator::const_iterator(iterator const& other)
    : const_iterator(other.m_list, *other.m_position) {}

HLVError::List::const_iterator&
HLVError::List::const_iterator::operator=(const_iterator const& other) {
    auto* const position = new std::list<HLVError*>::const_iterator(*other.m_position);
    delete std::exchange(m_position, position);
    m_list = other.m_list;
    return *this;
}

HLVError::List::const_iterator& HLVError::List::const_iterator::operator=(iterator const& other) {
    return *this = const_iterator(other);
}

HLVError::List::const_iterator::~const_iterator() {
    delete m_position;
}

bool HLVError::List::const_iterator::begin() const noexcept {
    return *m_position == m_list->begin();
}

bool HLVError::List::const_iterator::end() const noexcept {
    return *m_position == m_list->end();
}

HLVError const* HLVError::List::const_iterator::operator*() const noexcept {
    return entryAt(*m_list, *m_position);
}

HLVError::List::const_iterator& HLVError::List::const_iterator::operator++() noexcept {
    stepForward(*m_list, *m_position);
    return *this;
}

HLVError::List::const_iterator& HLVError::List::const_iterator::operator--() noexcept {
    stepBack(*m_list, *m_position);
    return *this;
}

bool HLVError::List::const_iterator::operator==(iterator const& other) const noexcept {
    return m_list == other.m_list && *m_position == *other.m_position;
}

bool HLVError::List::const_iterator::operator==(const_iterator const& other) const noexcept {
    return m_list == other.m_list && *m_position == *other.m_position;
}

} // namespace Halvora
