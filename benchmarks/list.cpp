// Lists that own their errors: filled, walked, searched, rotated, emptied from the front.

#include "Bench.h"

#include <Halvora/error/HLVError.h>

#include <cstdint>
#include <list>
#include <memory>
#include <utility>
#include <vector>

#ifdef HALVTYPES_WITH_GLIB
#    include <glib.h>
#endif
#ifdef HALVTYPES_WITH_QT
#    include <QList>
#endif

using namespace Halvora;
using bench::addSame;

namespace {

// Each list has these: `add` takes the error, `until` walks from the first entry on until the
// visitor answers true, `rotate` takes the first entry out and puts it at the end.

struct Ours {
    HLVError::List list;

    void add(HLVError* error) { list.add(error); }
    template <typename Visitor>
    void until(Visitor visitor) {
        for (auto at = list.begin(); !at.end() && !visitor(*at); ++at) {
        }
    }
    void rotate() {
        HLVError::Holder holder;
        auto at = list.begin();
        list.extract(at, holder);
        list.add(holder);
    }
    void removeFirst() {
        auto at = list.begin();
        list.remove(at);
    }
    int count() const { return list.getCount(); }
};

struct StandardList {
    std::list<std::unique_ptr<HLVError>> list;

    void add(HLVError* error) { list.emplace_back(error); }
    template <typename Visitor>
    void until(Visitor visitor) {
        for (auto at = list.begin(); at != list.end() && !visitor(at->get()); ++at) {
        }
    }
    void rotate() {
        std::unique_ptr<HLVError> error = std::move(list.front());
        list.pop_front();
        list.push_back(std::move(error));
    }
    void removeFirst() { list.pop_front(); }
    int count() const { return static_cast<int>(list.size()); }
};

#ifdef HALVTYPES_WITH_QT
struct QtList {
    QList<HLVError*> list;

    ~QtList() { qDeleteAll(list); }
    void add(HLVError* error) { list.append(error); }
    template <typename Visitor>
    void until(Visitor visitor) {
        for (auto at = list.cbegin(); at != list.cend() && !visitor(*at); ++at) {
        }
    }
    void rotate() { list.append(list.takeFirst()); }
    void removeFirst() { delete list.takeFirst(); }
    int count() const { return list.size(); }
};
#endif

#ifdef HALVTYPES_WITH_GLIB
struct GLibQueue {
    GQueue list = G_QUEUE_INIT;

    ~GLibQueue() {
        g_queue_clear_full(&list, [](gpointer error) { delete static_cast<HLVError*>(error); });
    }
    void add(HLVError* error) { g_queue_push_tail(&list, error); }
    template <typename Visitor>
    void until(Visitor visitor) {
        for (GList* at = list.head; at != nullptr && !visitor(static_cast<HLVError*>(at->data));
             at = at->next) {
        }
    }
    void rotate() { g_queue_push_tail(&list, g_queue_pop_head(&list)); }
    void removeFirst() { delete static_cast<HLVError*>(g_queue_pop_head(&list)); }
    int count() const { return static_cast<int>(list.length); }
};
#endif

// n entries, all warnings but the last.
template <typename List>
void fill(List& list, int n) {
    for (int i = 1; i <= n; ++i) {
        list.add(new HLVError(i < n ? i : -1));
    }
}

template <typename List>
void addWalks(char const* who, int n) {
    auto const size = static_cast<std::size_t>(n);
    auto const list = std::make_shared<List>();
    fill(*list, n);
    addSame("list: walk", size, who, static_cast<std::int64_t>(n) * (n - 1) / 2 - 1, [list] {
        std::int64_t sum = 0;
        list->until([&sum](HLVError const* error) {
            sum += error->getCode();
            return false;
        });
        return sum;
    });
    addSame("list: find a code", size, who, n - 1, [list] {
        int steps = 0;
        list->until([&steps](HLVError const* error) {
            bool const isFound = error->getCode() == -1;
            steps += isFound ? 0 : 1;
            return isFound;
        });
        return steps;
    });
}

template <typename List>
void addChanges(char const* who, int n) {
    auto const size = static_cast<std::size_t>(n);
    addSame("list: add, destroy", size, who, n, [n] {
        List list;
        fill(list, n);
        return list.count();
    });
    auto const same = std::make_shared<List>();
    fill(*same, n);
    addSame("list: extract, add each", size, who, n, [same, n] {
        for (int i = 0; i < n; ++i) {
            same->rotate();
        }
        return same->count();
    });
    addSame("list: add, remove each", size, who, 0, [n] {
        List list;
        fill(list, n);
        for (int i = 0; i < n; ++i) {
            list.removeFirst();
        }
        return list.count();
    });
}

// Lists of one size are filled one after another, so that their memory lies alike.
template <typename... Lists>
void addLists(std::vector<char const*> const& names) {
    for (int const n : {16, 256, 4096, 65536}) {
        auto name = names.begin();
        (addWalks<Lists>(*name++, n), ...);
        name = names.begin();
        (addChanges<Lists>(*name++, n), ...);
    }
}

} // namespace

int main(int argc, char** argv) {
    addLists<Ours, StandardList>({"ours", "limit"});
#ifdef HALVTYPES_WITH_QT
    addLists<QtList>({"QList"});
#endif
#ifdef HALVTYPES_WITH_GLIB
    addLists<GLibQueue>({"GQueue"});
#endif
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
