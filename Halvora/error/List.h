#pragma once

#include <Halvora/Export.h>
#include <Halvora/error/HLVError.h>

#include <cstddef>
#include <iterator>
#include <list>
#include <memory>
#include <utility>

namespace Halvora {

/// The owner of any number of errors and warnings in the order in which they were added. It takes
/// neither null nor an error with code 0.
class HALVTYPES_API HLVError::List {
public:
    class iterator;
    class const_iterator;

    /// Empty.
    List();

    /// Takes ownership of `error` as `add` does.
    List(HLVError* error);

    /// Takes the error of the holder as `add` does.
    List(Holder& holder);

    /// Takes `error` as `add` does.
    List(std::unique_ptr<HLVError>&& error) : List() { add(std::move(error)); }

    List(List const&) = delete;            ///< Entries are passed on by `add`.
    List& operator=(List const&) = delete; ///< Entries are passed on by `add`.

    /// Takes over all entries of `other`, which is empty then. Positions at them stay valid and
    /// belong to this list.
    List(List&& other) noexcept;

    /// Deletes every entry and takes over those of `other`, which is empty then; from itself,
    /// nothing happens. Positions at them stay valid and belong to this list.
    List& operator=(List&& other) noexcept;

    /// Deletes every entry.
    virtual ~List();

    /// Takes ownership of `error` and puts it at the end; answers whether it is an error. Null and
    /// code 0 are not taken and stay the caller's, as everything does when memory runs out.
    bool add(HLVError* error);
    /// As `add`.
    bool operator+=(HLVError* error) { return add(error); }

    /// Puts the error of the holder at the end; answers whether it is an error. The holder is
    /// emptied in every case: an error that the list does not take is deleted. When memory runs out
    /// the holder still has it.
    bool add(Holder& holder);
    /// As `add`.
    bool operator+=(Holder& holder) { return add(holder); }

    /// Puts `error` at the end; answers whether it is an error. It is null then: null and code 0
    /// are not taken but deleted. When memory runs out it is unchanged.
    bool add(std::unique_ptr<HLVError>&& error) {
        bool const isAnError = add(error.get());
        letGo(error);
        return isAnError;
    }
    /// As `add`.
    bool operator+=(std::unique_ptr<HLVError>&& error) { return add(std::move(error)); }

    /// Moves all entries of `other` to the end of this list; answers whether an error was among
    /// them. Adding a list to itself changes nothing and answers false. Constant time. Positions in
    /// `other` become invalid.
    bool add(List& other) noexcept;
    /// As `add`.
    bool operator+=(List& other) noexcept { return add(other); }

    /// Deletes every entry.
    void clear() noexcept;

    /// The number of entries.
    int getCount() const noexcept;
    /// The number of entries with a code below 0.
    int getErrorCount() const noexcept { return m_errorCount; }
    /// The number of entries with a code above 0.
    int getWarningCount() const noexcept { return m_warningCount; }

    /// The first entry that is an error, null if none is. The list keeps ownership.
    HLVError* getFirstError() const noexcept;
    /// The last entry that is an error, null if none is. The list keeps ownership.
    HLVError* getLastError() const noexcept;

    /// The position of the first entry; the end position of an empty list.
    iterator begin();
    /// The position behind the last entry.
    iterator end();
    /// The position of the first entry; the end position of an empty list.
    const_iterator begin() const;
    /// The position behind the last entry.
    const_iterator end() const;

    /// @name Entries
    /// These want a position that stands at an entry of this list, and leave it without one: assign
    /// it anew before any other use. At the end position, or at a position of another list, they
    /// change nothing. Other positions stay valid.
    /// @{

    /// Takes the entry out of the list and hands it to the holder, which deletes its own.
    void extract(iterator& position, Holder& holder) noexcept;

    /// Takes the entry out of the list and deletes it.
    void remove(iterator& position) noexcept;

    /// Puts `error`, of which it takes ownership, in the place of the entry, which is deleted. Null
    /// and code 0 are not taken, and the entry is only removed. `error` may be the entry itself:
    /// then nothing changes. When memory runs out nothing changes either.
    void replace(iterator& position, HLVError* error);

    /// The same with the error of the holder, which is emptied when there is an entry: an error
    /// that the list does not take is deleted. When memory runs out nothing changes.
    void replace(iterator& position, Holder& holder);

    /// The same with `error`, which is null then when there is an entry: an error that the list
    /// does not take is deleted. When memory runs out nothing changes.
    void replace(iterator& position, std::unique_ptr<HLVError>&& error) {
        if (standsAtEntry(position)) {
            replace(position, error.get());
            letGo(error);
        }
    }
    /// @}

private:
    void count(HLVError const& error, int change) noexcept;
    HLVError* unlink(iterator& position) noexcept;
    bool standsAtEntry(iterator const& position) const noexcept;

    // The list has the error now, or refuses it: then nobody else wants it.
    static inline void letGo(std::unique_ptr<HLVError>& error) noexcept;

    std::list<HLVError*>* m_entries; // null once moved from, until something is added
    int m_errorCount = 0;
    int m_warningCount = 0;
};

/// A position in a list. The positions form a ring through the end position: a step forward from
/// the last entry reaches the end, one more the first entry. `begin()` and `end()` are tests of the
/// position; a walk goes on while `end()` is false.
///
/// Each iterator allocates its position, so does each postfix step, and a failed allocation in an
/// assignment leaves it where it was.
class HALVTYPES_API HLVError::List::iterator {
public:
    /// For the standard algorithms.
    using iterator_category = std::bidirectional_iterator_tag;
    /// An entry.
    using value_type = HLVError*;
    /// A number of steps.
    using difference_type = std::ptrdiff_t;
    /// There is no `->` for a pointer.
    using pointer = void;
    /// What `*position` gives.
    using reference = HLVError*;

    /// A position in no list: at its begin and its end, where steps lead nowhere.
    iterator();

    /// The position `position` of the storage `list`; both stay the caller's.
    iterator(std::list<HLVError*>* list, std::list<HLVError*>::iterator position);

    /// The same position.
    iterator(iterator const& other);

    /// The position of `other`. When memory runs out this one stays where it was.
    iterator& operator=(iterator const& other);

    /// Releases the position; the list keeps its entries.
    virtual ~iterator();

    /// Whether it stands at the first entry; in an empty list, at the end position.
    bool begin() const noexcept;
    /// Whether it stands at the end position.
    bool end() const noexcept;

    /// The error at the position, which the list keeps; null at the end position.
    HLVError* operator*() const noexcept;

    /// One step forward along the ring.
    iterator& operator++() noexcept;
    /// One step back along the ring.
    iterator& operator--() noexcept;
    /// One step forward; gives the position before it. Allocates, the prefix form does not.
    iterator operator++(int) {
        iterator const before(*this);
        ++*this;
        return before;
    }
    /// One step back; gives the position before it. Allocates, the prefix form does not.
    iterator operator--(int) {
        iterator const before(*this);
        --*this;
        return before;
    }

    /// Whether both stand at the same position of the same list.
    bool operator==(iterator const& other) const noexcept;
    /// Whether both stand at the same position of the same list.
    bool operator==(const_iterator const& other) const noexcept;
    /// Whether they stand at different positions, or in different lists.
    bool operator!=(iterator const& other) const noexcept { return !(*this == other); }
    /// Whether they stand at different positions, or in different lists.
    bool operator!=(const_iterator const& other) const noexcept { return !(*this == other); }

private:
    friend class List;
    friend class const_iterator;

    std::list<HLVError*>* m_list;
    std::list<HLVError*>::iterator* m_position;
};

/// A position in a list whose entries are only read. All else is as in `HLVError::List::iterator`.
class HALVTYPES_API HLVError::List::const_iterator {
public:
    /// For the standard algorithms.
    using iterator_category = std::bidirectional_iterator_tag;
    /// An entry.
    using value_type = HLVError const*;
    /// A number of steps.
    using difference_type = std::ptrdiff_t;
    /// There is no `->` for a pointer.
    using pointer = void;
    /// What `*position` gives.
    using reference = HLVError const*;

    /// A position in no list: at its begin and its end, where steps lead nowhere.
    const_iterator();

    /// The position `position` of the storage `list`; both stay the caller's.
    const_iterator(std::list<HLVError*> const* list, std::list<HLVError*>::const_iterator position);

    /// The same position.
    const_iterator(const_iterator const& other);
    /// The same position.
    const_iterator(iterator const& other);

    /// The position of `other`. When memory runs out this one stays where it was.
    const_iterator& operator=(const_iterator const& other);
    /// The position of `other`. When memory runs out this one stays where it was.
    const_iterator& operator=(iterator const& other);

    /// Releases the position; the list keeps its entries.
    virtual ~const_iterator();

    /// Whether it stands at the first entry; in an empty list, at the end position.
    bool begin() const noexcept;
    /// Whether it stands at the end position.
    bool end() const noexcept;

    /// The error at the position, which the list keeps; null at the end position.
    HLVError const* operator*() const noexcept;

    /// One step forward along the ring.
    const_iterator& operator++() noexcept;
    /// One step back along the ring.
    const_iterator& operator--() noexcept;
    /// One step forward; gives the position before it. Allocates, the prefix form does not.
    const_iterator operator++(int) {
        const_iterator const before(*this);
        ++*this;
        return before;
    }
    /// One step back; gives the position before it. Allocates, the prefix form does not.
    const_iterator operator--(int) {
        const_iterator const before(*this);
        --*this;
        return before;
    }

    /// Whether both stand at the same position of the same list.
    bool operator==(iterator const& other) const noexcept;
    /// Whether both stand at the same position of the same list.
    bool operator==(const_iterator const& other) const noexcept;
    /// Whether they stand at different positions, or in different lists.
    bool operator!=(iterator const& other) const noexcept { return !(*this == other); }
    /// Whether they stand at different positions, or in different lists.
    bool operator!=(const_iterator const& other) const noexcept { return !(*this == other); }

private:
    friend class iterator;

    std::list<HLVError*> const* m_list;
    std::list<HLVError*>::const_iterator* m_position;
};

} // namespace Halvora

#include <Halvora/error/ListInline.h>
