#define HALVTYPES_LIST_STEPS
#include <Halvora/error/List.h>

#include <algorithm>
#include <new>
#include <utility>

namespace Halvora {

namespace {

// What a position in no list stands in: always empty, and never destroyed.
std::list<HLVError*>& nowhere() {
    alignas(std::list<HLVError*>) static unsigned char storage[sizeof(std::list<HLVError*>)];
    static auto* const list = new (storage) std::list<HLVError*>;
    return *list;
}

bool isTaken(HLVError const* error) noexcept {
    return error != nullptr && error->getCode() != 0;
}

} // namespace

HLVError::List::List() : m_entries(new std::list<HLVError*>) {}

// These delegate, so that the destructor runs when there is no memory for the entry.
HLVError::List::List(HLVError* error) : List() {
    add(error);
}

HLVError::List::List(Holder& holder) : List() {
    add(holder);
}

HLVError::List::List(List&& other) noexcept
    : m_entries(std::exchange(other.m_entries, nullptr)),
      m_errorCount(std::exchange(other.m_errorCount, 0)),
      m_warningCount(std::exchange(other.m_warningCount, 0)) {}

HLVError::List& HLVError::List::operator=(List&& other) noexcept {
    if (this != &other) {
        clear();
        std::swap(m_entries, other.m_entries);
        m_errorCount = std::exchange(other.m_errorCount, 0);
        m_warningCount = std::exchange(other.m_warningCount, 0);
    }
    return *this;
}

HLVError::List::~List() {
    clear();
    delete m_entries;
}

bool HLVError::List::add(HLVError* error) {
    if (!isTaken(error)) {
        return false;
    }
    if (m_entries == nullptr) {
        m_entries = new std::list<HLVError*>;
    }
    m_entries->push_back(error);
    count(*error, 1);
    return error->getCode() < 0;
}

bool HLVError::List::add(Holder& holder) {
    bool const isAnError = add(holder.getError());
    std::unique_ptr<HLVError> error(holder.extractError());
    letGo(error);
    return isAnError;
}

bool HLVError::List::add(List& other) noexcept {
    if (this == &other) {
        return false;
    }
    bool const hasErrors = other.m_errorCount > 0;
    if (m_entries == nullptr) {
        std::swap(m_entries, other.m_entries);
    } else if (other.m_entries != nullptr) {
        m_entries->splice(m_entries->end(), *other.m_entries);
    }
    m_errorCount += std::exchange(other.m_errorCount, 0);
    m_warningCount += std::exchange(other.m_warningCount, 0);
    return hasErrors;
}

void HLVError::List::clear() noexcept {
    if (m_entries == nullptr) {
        return;
    }
    for (HLVError* error : *m_entries) {
        delete error;
    }
    m_entries->clear();
    m_errorCount = 0;
    m_warningCount = 0;
}

int HLVError::List::getCount() const noexcept {
    return m_entries == nullptr ? 0 : static_cast<int>(m_entries->size());
}

HLVError* HLVError::List::getFirstError() const noexcept {
    if (m_errorCount == 0) {
        return nullptr;
    }
    auto const found = std::find_if(m_entries->begin(), m_entries->end(), isError);
    return *found;
}

HLVError* HLVError::List::getLastError() const noexcept {
    if (m_errorCount == 0) {
        return nullptr;
    }
    auto const found = std::find_if(m_entries->rbegin(), m_entries->rend(), isError);
    return *found;
}

HLVError::List::iterator HLVError::List::begin() {
    return m_entries == nullptr ? iterator() : iterator(m_entries, m_entries->begin());
}

HLVError::List::iterator HLVError::List::end() {
    return m_entries == nullptr ? iterator() : iterator(m_entries, m_entries->end());
}

HLVError::List::const_iterator HLVError::List::begin() const {
    return m_entries == nullptr ? const_iterator() : const_iterator(m_entries, m_entries->begin());
}

HLVError::List::const_iterator HLVError::List::end() const {
    return m_entries == nullptr ? const_iterator() : const_iterator(m_entries, m_entries->end());
}

void HLVError::List::extract(iterator& position, Holder& holder) noexcept {
    if (HLVError* const error = unlink(position); error != nullptr) {
        holder.setError(error);
    }
}

void HLVError::List::remove(iterator& position) noexcept {
    delete unlink(position);
}

void HLVError::List::replace(iterator& position, HLVError* error) {
    if (standsAtEntry(position) && *position == error) {
        return;
    }
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
    std::unique_ptr<HLVError> error(holder.extractError());
    letGo(error);
}

void HLVError::List::count(HLVError const& error, int change) noexcept {
    (error.getCode() < 0 ? m_errorCount : m_warningCount) += change;
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

HLVError::List::iterator::iterator() : iterator(&nowhere(), nowhere().end()) {}

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

bool HLVError::List::iterator::operator==(iterator const& other) const noexcept {
    return m_list == other.m_list && *m_position == *other.m_position;
}

bool HLVError::List::iterator::operator==(const_iterator const& other) const noexcept {
    return other == *this;
}

HLVError::List::const_iterator::const_iterator() : const_iterator(&nowhere(), nowhere().end()) {}

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

bool HLVError::List::const_iterator::operator==(iterator const& other) const noexcept {
    return m_list == other.m_list && *m_position == *other.m_position;
}

bool HLVError::List::const_iterator::operator==(const_iterator const& other) const noexcept {
    return m_list == other.m_list && *m_position == *other.m_position;
}

} // namespace Halvora
