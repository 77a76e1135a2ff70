#pragma once

#include <Halvora/Export.h>
#include <Halvora/error/HLVError.h>

#include <cstddef>
#include <iterator>
#include <list>

namespace Halvora {

// The owner of any number of errors and warnings in the order in which they were added. It takes
// neither null nor an error with code 0.
class HALVTYPES_API HLVError::List {
public:
    class iterator;
    class const_iterator;

    // Empty, or with the argument added as by add.
    List();
    explicit List(HLVError* error);
    explicit List(Holder& holder);
    List(List const&) = delete;
    List& operator=(List const&) = delete;
    virtual ~List();

    // Takes ownership of `error`; answers whether it is an error. Null and code 0 are not taken and
    // stay the caller's, as everything does when memory runs out.
    bool add(HLVError* error);
    bool operator+=(HLVError* error) { return add(error); }

    // The same with the error of the holder, which is emptied in every case: an error that the list
    // does not take is deleted. When memory runs out the holder still has it.
    bool add(Holder& holder);
    bool operator+=(Holder& holder) { return add(holder); }

    // Moves all entries of `other` to the end of this list; answers whether an error was among
    // them. Adding a list to itself changes nothing and answers false. Constant time. Positions in
    // `other` become invalid.
    bool add(List& other) noexcept;
    bool operator+=(List& other) noexcept { return add(other); }

    // Deletes every entry.
    void clear() noexcept;

    // Of all entries, of those below code 0, and of those above.
    int getCount() const noexcept;
    int getErrorCount() const noexcept { return m_errorCount; }
    int getWarningCount() const noexcept { return m_warningCount; }

    // The first and the last entry that is an error, null if none is. The list keeps ownership.
    HLVError* getFirstError() const noexcept;
    HLVError* getLastError() const noexcept;

    // The first entry, and the position behind the last one.
    iterator begin();
    iterator end();
    const_iterator begin() const;
    const_iterator end() const;

    // These want a position that stands at an entry of this list, and leave it without one: assign
    // it anew before any other use. At the end position, or at a position of another list, they
    // change nothing. Other positions stay valid.

    // Hands the entry to the holder.
    void extract(iterator& position, Holder& holder) noexcept;

    // Deletes the entry.
    void remove(iterator& position) noexcept;

    // Puts `error`, of which it takes ownership, in the place of the entry, which is deleted. Null
    // and code 0 are not taken, and the entry is only removed. When memory runs out nothing
    // changes.
    void replace(iterator& position, HLVError* error);

    // The same with the error of the holder, which is emptied when there is an entry: an error that
    // the list does not take is deleted. When memory runs out nothing changes.
    void replace(iterator& position, Holder& holder);

private:
    void count(HLVError const& error, int change) noexcept;
    HLVError* unlink(iterator& position) noexcept;
    bool standsAtEntry(iterator const& position) const noexcept;

    std::list<HLVError*>* m_entries;
    int m_errorCount = 0;
    int m_warningCount = 0;
};

// A position in a list. The positions form a ring through the end position: a step forward from the
// last entry reaches the end, one more the first entry. begin() and end() are tests of the
// position; a walk goes on while end() is false. Each iterator allocates its position, and a failed
// allocation in an assignment leaves it where it was.
class HALVTYPES_API HLVError::List::iterator {
public:
    // As the standard library calls them.
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = HLVError*;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = HLVError*;

    // A position of its own, where the arguments say.
    iterator(std::list<HLVError*>* list, std::list<HLVError*>::iterator position);
    iterator(iterator const& other);
    iterator& operator=(iterator const& other);
    virtual ~iterator();

    // Whether it stands at the first entry, or at the end position. Without entries it is at both.
    bool begin() const noexcept;
    bool end() const noexcept;

    // The error at the position, which the list keeps; null at the end position.
    HLVError* operator*() const noexcept;

    // One step along the ring; the postfix forms give the position before it.
    iterator& operator++() noexcept;
    iterator& operator--() noexcept;
    iterator operator++(int) {
        iterator const before(*this);
        ++*this;
        return before;
    }
    iterator operator--(int) {
        iterator const before(*this);
        --*this;
        return before;
    }

    // Whether both stand at the same position of the same list.
    bool operator==(iterator const& other) const noexcept;
    bool operator==(const_iterator const& other) const noexcept;
    bool operator!=(iterator const& other) const noexcept { return !(*this == other); }
    bool operator!=(const_iterator const& other) const noexcept { return !(*this == other); }

private:
    friend class List;
    friend class const_iterator;

    std::list<HLVError*>* m_list;
    std::list<HLVError*>::iterator* m_position;
};

// A position in a list whose entries are only read.
class HALVTYPES_API HLVError::List::const_iterator {
public:
    // All members do what those of iterator do.

    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = HLVError const*;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = HLVError const*;

    const_iterator(std::list<HLVError*> const* list, std::list<HLVError*>::const_iterator position);
    const_iterator(const_iterator const& other);
    const_iterator(iterator const& other);
    const_iterator& operator=(const_iterator const& other);
    const_iterator& operator=(iterator const& other);
    virtual ~const_iterator();

    bool begin() const noexcept;
    bool end() const noexcept;

    HLVError const* operator*() const noexcept;

    const_iterator& operator++() noexcept;
    const_iterator& operator--() noexcept;
    const_iterator operator++(int) {
        const_iterator const before(*this);
        ++*this;
        return before;
    }
    const_iterator operator--(int) {
        const_iterator const before(*this);
        --*this;
        return before;
    }

    bool operator==(iterator const& other) const noexcept;
    bool operator==(const_iterator const& other) const noexcept;
    bool operator!=(iterator const& other) const noexcept { return !(*this == other); }
    bool operator!=(const_iterator const& other) const noexcept { return !(*this == other); }

private:
    friend class iterator;

    std::list<HLVError*> const* m_list;
    std::list<HLVError*>::const_iterator* m_position;
};

} // namespace Halvora
