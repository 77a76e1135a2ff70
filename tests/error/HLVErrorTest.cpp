#include <Halvora/error/Exception.h>
#include <Halvora/error/HLVError.h>
#include <Halvora/error/HLVErrorException.h>
#include <Halvora/text/ResString.h>
#include <tests/support/Memory.h>

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <locale>
#include <memory>
#include <pthread.h>
#include <random>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace Halvora::test {
namespace {

using ios = std::ios_base;
using Byte = unsigned char;
using Unit = unsigned short;
using Holder = HLVError::Holder;
using List = HLVError::List;
using Param = HLVError::Param;

// So that nothing is printed as an error or a parameter by accident.
static_assert(!std::is_convertible_v<std::exception&, HLVError> &&
              !std::is_convertible_v<int, HLVError> && !std::is_convertible_v<int, Param> &&
              !std::is_constructible_v<Param, void*> && std::is_convertible_v<HLVError*, Holder>);

// What `put` writes to a wide stream; a narrow one must show the same, with a space for every
// character that it cannot hold.
template <typename Put>
std::wstring shown(Put put) {
    std::wostringstream wide;
    std::ostringstream narrow;
    put(wide);
    put(narrow);
    std::string expected;
    for (wchar_t const c : wide.str()) {
        expected += static_cast<unsigned>(c) > 0xFF ? ' ' : static_cast<char>(c);
    }
    EXPECT_EQ(expected, narrow.str());
    return wide.str();
}

template <typename T>
std::wstring text(T const& value, ios::fmtflags flags = {}, std::size_t width = 0) {
    return shown([&](auto& stream) {
        stream.flags(flags);
        stream.width(static_cast<std::streamsize>(width));
        stream << value;
    });
}

// parameters

Unit const units[] = {'a', 0x20AC, 0xFFFF, 0};
Binary16 const id(0x03020100u, 0x0504, 0x0706, 0x0F0E0D0C0B0A0908ull);
wchar_t const idText[] = L"0x0F0E0D0C0B0A09080706050403020100/03020100-0504-0706-0809-0a0b0c0d0e0f";

template <typename... T>
bool reads(Param const& p, T... values) {
    return ((p.getValue(values), std::memcmp(&values, &p.getData(), sizeof values) == 0) && ...);
}

void expect(Param const& param, eDataType type, Binary16 const& data, std::wstring const& shows) {
    SCOPED_TRACE(shows);
    for (Param const& each : {param, Param(param)}) {
        EXPECT_EQ(type, each.getDataType());
        EXPECT_TRUE(data == each.getData());
        EXPECT_EQ(type == DT_STRING || type == DT_STRINGRES ? shows : L"", each.getDataString());
        EXPECT_EQ(shows, shown([&](auto& s) { EXPECT_EQ(&s, &(s << each)); }));
    }
    EXPECT_TRUE(reads(param, Byte(9), short(9), Unit(9), 9, 9u, 9L, 9UL, 9LL, 9ULL, 9.f, 9., id));
    bool isSet = data[0] == 0;
    std::wstring string = L"old";
    param.getValue(isSet);
    param.getValue(string);
    EXPECT_TRUE(isSet == (data[0] != 0) && string == param.getDataString());
}

TEST(Param, keepsTypeAndBytesAndPrintsItsValue) {
    expect(Param(true), DT_BOOL, 1, L"1");
    expect(Param(Byte(0xC1)), DT_BYTE, 0xC1, L"193");
    expect(Param(short(-2)), DT_INT16, 0xFFFFFFFEu, L"-2");
    expect(Param(Unit(0xFFFE)), DT_UINT16, 0xFFFE, L"65534");
    expect(Param(-3), DT_INT32, 0xFFFFFFFDu, L"-3");
    expect(Param(0xFFFFFFFCu), DT_UINT32, 0xFFFFFFFCu, L"4294967292");
    expect(Param(7L), sizeof(long) == 4 ? DT_INT32 : DT_INT64, 7, L"7");
    expect(Param(7UL), sizeof(long) == 4 ? DT_UINT32 : DT_UINT64, 7, L"7");
    expect(Param(-(1LL << 40)), DT_INT64, 0xFFFFFF0000000000ull, L"-1099511627776");
    expect(Param(1ULL << 63), DT_UINT64, 1ULL << 63, L"9223372036854775808");
    expect(Param(-3.5f), DT_FLOAT, 0xC0600000u, L"-3.5");
    expect(Param(0.1), DT_DOUBLE, 0x3FB999999999999Aull, L"0.1");
    expect(Param(id), DT_BINARY16, id, idText);
    expect(Param(ResString(id, std::wstring(L"a\u20AC"))), DT_STRINGRES, id, L"a\u20AC");
    expect(Param("a\xE9"), DT_STRING, {}, L"a\u00E9");
    expect(Param(std::string("a\0\xFF", 3)), DT_STRING, {}, std::wstring(L"a\0\u00FF", 3));
    expect(Param(L"\U0001F600\u0100"), DT_STRING, {}, L"\U0001F600\u0100");
    expect(Param(std::wstring(L"a\0b", 3)), DT_STRING, {}, std::wstring(L"a\0b", 3));
    expect(Param(units), DT_STRING, {}, L"a\u20AC\uFFFF");
    expect(Param(HLVString(units, 4)), DT_STRING, {}, std::wstring(L"a\u20AC\uFFFF\0", 4));
    expect(Param(static_cast<char const*>(nullptr)), DT_STRING, {}, L"");
    expect(Param(static_cast<Unit const*>(nullptr)), DT_STRING, {}, L"");
    EXPECT_THROW(Param(static_cast<wchar_t const*>(nullptr)), std::logic_error);
}

TEST(Param, followsTheFormatOfTheStream) {
    EXPECT_EQ(L"true", text(Param(true), ios::boolalpha));
    EXPECT_EQ(L"+65", text(Param(Byte(65)), ios::showpos));
    EXPECT_EQ(L"fffe", text(Param(short(-2)), ios::hex));
    EXPECT_EQ(L"9   ", text(Param(Unit(9)), ios::showpos | ios::left, 4));
    EXPECT_EQ(idText, text(Param(id), ios::oct | ios::showbase));
    for (std::size_t const length : {0u, 1u, 255u, 256u, 257u, 512u, 513u, 700u}) {
        std::wstring wide(length, L'A');
        for (std::size_t i = 0; i < length; i += 7) {
            wide[i] = L'\u20AC';
        }
        for (std::size_t const width : {0u, 256u, 257u, 520u, 705u}) {
            std::wstring const padding(std::max(width, length) - length, L' ');
            EXPECT_EQ(padding + wide, text(Param(wide), ios::right, width));
            EXPECT_EQ(wide + padding, text(Param(wide), ios::left, width));
        }
    }
}

// errors

HLVError* newChain() {
    Holder holder(new HLVError(3, nullptr, new Param(true)));
    holder.prependError(-4, nullptr, nullptr, new Param(9));
    holder.prependError(-4, &id, nullptr, new Param(8), nullptr);
    holder.prependError(-5, units, new Param(7), nullptr, new Param(std::string(30, 't')));
    return holder.extractError();
}

std::wstring const line = L"\n" + std::wstring(51, L'-') + L"\n";
std::wstring const head = L"Error -5\n  P1: 7\n  P3: " + std::wstring(30, L't');
std::wstring const chain =
    head + line + L"Error -4\n  P2: 8" + line + L"Error -4\n  P3: 9" + line + L"Error 3\n  P2: 1";

TEST(HLVError, printsItselfAndItsChain) {
    Holder const holder(newChain());
    HLVError* const error = holder.getError();
    EXPECT_EQ(head, shown([&](auto& s) { EXPECT_EQ(&s, &error->singleOutput(s)); }));
    EXPECT_EQ(chain, shown([&](auto& s) { EXPECT_EQ(&s, &(*error << s)); }));
    EXPECT_EQ(chain + chain + chain, text(*error) + text(error) + text(holder));
    EXPECT_EQ(L"<NONE><NONE>", text(Holder()) + text(static_cast<HLVError*>(nullptr)));
    EXPECT_EQ(L"Error 0", text(HLVError()));
    EXPECT_EQ(L"Error -1\n  P1: \u00E9", text(HLVError(std::runtime_error("\xE9"))));
    EXPECT_EQ(L"  Error fffffffb", text(HLVError(-5), ios::hex, 8));
}

TEST(HLVError, isClassifiedAndSearched) {
    EXPECT_FALSE(HLVError::isError(nullptr) || HLVError::isWarning(nullptr));
    for (int const code : {-0x7FFFFFFF, -1, 0, 1, 0x7FFFFFFF}) {
        HLVError const error(code);
        EXPECT_TRUE(HLVError::isError(&error) == (code < 0)) << code;
        EXPECT_TRUE(HLVError::isWarning(&error) == (code > 0)) << code;
        EXPECT_EQ(code < 0 ? text(error) : L"<NONE>", text(Holder(HLVError::makeError(code))));
    }
    Holder const holder(newChain());
    HLVError const* const error = holder.getError();
    auto const* const twin = error->getPrecedingError();
    auto const* const base = twin->getPrecedingError()->getPrecedingError();
    EXPECT_TRUE(base == error->getBaseError() && base == base->getBaseError());
    EXPECT_TRUE(error == error->getByCode(-5) && twin == error->getByCode(-4));
    EXPECT_TRUE(base == error->getByCode(3) && twin->getByCode(-5) == nullptr);
}

template <typename Char>
struct Grouping : std::numpunct<Char> {
    Char do_thousands_sep() const override { return '_'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(HLVError, messageIgnoresTheLocaleThatStreamsFollow) {
    HLVError const error(-1'234'567, new Param(1234)), least(std::numeric_limits<int>::min());
    std::locale const narrow(std::locale::classic(), new Grouping<char>);
    auto const before = std::locale::global(std::locale(narrow, new Grouping<wchar_t>));
    EXPECT_EQ("Error -1234567 Error -2147483648", error.messageA() + " " + least.messageA());
    EXPECT_EQ(L"Error -1234567", error.message());
    EXPECT_EQ(L"Error -1_234_567\n  P1: 1_234", text(error));
    std::locale::global(before);
}

TEST(HLVError, longChainsNeedNoDeepStack) {
    auto const useLongChain = [](void*) -> void* {
        Holder holder(new HLVError(-2));
        for (int i = 1; i < 400'000; ++i) {
            holder.prependError(-1);
        }
        Holder const copy = holder;
        EXPECT_TRUE(std::wofstream("/dev/null") << copy);
        EXPECT_EQ(copy.getError()->getBaseError(), copy.getError()->getByCode(-2));
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread;
    ASSERT_EQ(0, pthread_attr_init(&attributes) | pthread_attr_setstacksize(&attributes, 1 << 18));
    ASSERT_EQ(0, pthread_create(&thread, &attributes, useLongChain, nullptr));
    pthread_join(thread, nullptr);
}

// holders and lists

std::mt19937 dice;
using Model = std::vector<HLVError*>;

void compare(List const& list, Model const& model) {
    auto const first = std::find_if(model.begin(), model.end(), HLVError::isError);
    auto const last = std::find_if(model.rbegin(), model.rend(), HLVError::isError);
    auto const count = std::count_if(model.begin(), model.end(), HLVError::isError);
    EXPECT_TRUE(std::equal(model.begin(), model.end(), list.begin(), list.end()));
    EXPECT_EQ(count == 0 ? nullptr : *first, list.getFirstError());
    EXPECT_EQ(count == 0 ? nullptr : *last, list.getLastError());
    EXPECT_TRUE(count == list.getErrorCount() && model.size() == std::size_t(list.getCount()));
    EXPECT_EQ(list.getCount() - list.getErrorCount(), list.getWarningCount());
}

// A position that random steps around the ring lead to, and its index in the model.
List::iterator walk(List& list, Model const& model, std::ptrdiff_t& at) {
    auto const end = model.end() - model.begin();
    auto position = list.begin();
    for (auto steps = dice() % 9; steps > 0; --steps) {
        bool const isForward = dice() % 2 == 0;
        EXPECT_EQ(&position, isForward ? &++position : &--position);
        at = (at + (isForward ? 1 : end)) % (end + 1);
        EXPECT_EQ(at == end ? nullptr : model.begin()[at], *position);
        EXPECT_TRUE(position.begin() == (at == 0) && position.end() == (at == end));
    }
    return position;
}

void change(List& list, Model& model, Holder& holder, Holder& other) {
    std::ptrdiff_t at = 0;
    auto position = walk(list, model, at);
    HLVError* const entry = *position;
    HLVError* const error = holder.getError();
    std::wstring const before = text(error);
    bool const isError = HLVError::isError(error);
    bool const isTaken = isError || HLVError::isWarning(error);
    auto const operation = dice() % 12;
    switch (operation) {
    case 0: EXPECT_EQ(isError, list.add(holder)); break;
    case 1: EXPECT_EQ(isError, list += holder); break;
    case 2: EXPECT_EQ(isError, list += *std::make_unique<List>(holder)); break;
    case 3: list.replace(position, holder); break;
    case 4: list.extract(position, holder); break;
    case 5: list.remove(position); break;
    case 6: holder.move(other); break;
    case 7: other.setError(holder.extractError()); break;
    case 8: holder.copy(other); break;
    case 9: other = holder; break;
    default: holder.prependError(int(dice() % 5) - 2, &list, nullptr, new Param(1), nullptr);
    }
    bool const isGiven = operation < 3 || (operation == 3 && entry != nullptr);
    HLVError* left = isGiven || operation == 6 || operation == 7 ? nullptr : error;
    if (operation < 3) {
        model.insert(model.end(), isTaken ? 1 : 0, error);
    } else if (operation < 6 && entry != nullptr) {
        left = operation == 4 ? entry : left;
        model.insert(model.erase(model.begin() + at), isGiven && isTaken ? 1 : 0, error);
    } else if (operation == 6 || operation == 7) {
        EXPECT_EQ(error, other.getError());
    } else if (operation == 8 || operation == 9) {
        EXPECT_EQ(before, text(other));
        EXPECT_EQ(error == nullptr, error == other.getError());
    } else if (operation > 9) {
        left = holder.getError();
        EXPECT_TRUE(left->getPrecedingError() == error && left->getTag() == &list);
    }
    EXPECT_TRUE(&holder == &other || left == holder.getError());
    compare(list, model);
}

TEST(List, randomProgramsKeepToTheirModelAndFreeEverythingOnce) {
    long const before = liveBlocks();
    {
        Holder holders[3];
        List lists[2];
        Model models[2];
        for (std::size_t step = 1; step < 10'000; ++step) {
            change(lists[step % 2], models[step % 2], holders[dice() % 3], holders[dice() % 3]);
            if (step % 50 == 0) {
                bool const hasErrors = lists[1].getErrorCount() > 0;
                EXPECT_EQ(hasErrors, lists[0].add(lists[1]));
                EXPECT_FALSE(lists[0].add(lists[0]));
                models[0].insert(models[0].end(), models[1].begin(), models[1].end());
                models[1].clear();
            }
        }
    }
    EXPECT_EQ(before, liveBlocks());
}

TEST(List, positionsAreComparedAcrossListsAndKinds) {
    List list(new HLVError(-1));
    EXPECT_FALSE(list += new HLVError(2));
    List other;
    List::iterator position = other.begin();
    List::const_iterator constant = position;
    constant = position = list.begin();
    EXPECT_TRUE(position == constant && constant == position && position == list.begin());
    EXPECT_FALSE(position != constant || constant != position || position != list.begin());
    other.remove(position);
    compare(other, {});
    EXPECT_EQ(L"Error -1", text(*position));
    EXPECT_TRUE((position++).begin() && position-- != constant && position == constant);
    EXPECT_TRUE((constant++).begin() && constant-- != position && constant == position);
    auto const& self = constant = ++position;
    auto const& same = position;
    constant = self;
    position = same;
    EXPECT_TRUE(constant == position && list.begin() != constant && constant != list.begin());
    EXPECT_TRUE(position != other.end() && constant != other.end());
    EXPECT_TRUE(constant != List::const_iterator(other.end()));
    HLVError kept(1); // by its owner, since there is no entry to replace
    list.replace(position = list.end(), &kept);
    list.clear();
    compare(list, {});
}

// exceptions

TEST(HLVErrorException, copiesItsErrorDeeplyAndMovesIt) {
    HLVErrorException source(newChain(), "");
    HLVError const* const error = source.error();
    source.addTrace("Beta");
    source.addTrace(source.trace());
    HLVErrorException const copy(source);
    HLVErrorException const moved(std::move(source));
    EXPECT_TRUE(moved.error() == error && copy.error() != error);
    for (auto const* each : {&moved, &copy}) {
        EXPECT_EQ(chain, text(each->error()));
        EXPECT_EQ(units, each->error()->getTag());
        EXPECT_EQ(&id, each->error()->getPrecedingError()->getTag());
        EXPECT_STREQ("Error -5", each->what());
        EXPECT_EQ(" -> Beta ->  -> Beta", each->trace());
    }
    EXPECT_STREQ("Error 0", HLVErrorException(nullptr, "").what());
}

TEST(Exceptions, crossTheBoundaryOfALibrary) {
    void* const library = dlopen(HALVTYPES_ERROR_LAYER, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(nullptr, library) << dlerror();
    auto const layer = reinterpret_cast<void (*)(void (*)())>(dlsym(library, "layer"));
    try {
        layer(nullptr);
        ADD_FAILURE();
    } catch (std::exception const& e) {
        EXPECT_STREQ("Error -42", e.what());
        EXPECT_THROW(throw, HLVErrorException);
    }
    try {
        layer([] { throw Exception(3, "message", "made"); });
        ADD_FAILURE();
    } catch (Exception& e) {
        EXPECT_EQ(&e, &(e = Exception(4, "other", "other")));
        for (Exception const& each : {e, Exception(e)}) {
            EXPECT_STREQ("message", each.what());
            EXPECT_TRUE(each.code() == 3 && each.trace() == "made -> library");
        }
    }
    dlclose(library);
}

// memory

struct Scene {
    Holder holder{newChain()};
    List list{new HLVError(-3)};
    List::iterator position = list.begin();
    HLVErrorException thrown{newChain(), std::string(50, 't')};
    Exception exception{5, thrown.trace(), thrown.trace()};
    std::unique_ptr<HLVError> error{new HLVError(-9)};
    std::unique_ptr<Param> a{new Param(1)}, b{new Param(L"a long wide text")}, c{new Param(3)};

    std::wstring state() const {
        return text(holder) + text(list.getFirstError()) + text(*position) +
               text(Param(thrown.trace() + exception.trace())) + text(Param(list.getCount()));
    }
};

// Each of at least so many failing allocations changes and leaks nothing.
template <typename Act>
void fails(char const* name, int atLeast, Act act) {
    SCOPED_TRACE(name);
    std::wstring const before = Scene().state();
    auto const check = [&](Scene const& scene) { EXPECT_EQ(before, scene.state()); };
    EXPECT_LE(atLeast, failEachAllocation([] { return Scene(); }, act, check));
}

TEST(Memory, failedAllocationsChangeAndLeakNothing) {
    fails("copy", 8, [](Scene& s) { s.holder.copy(s.holder); });
    fails("assign", 8, [](Scene& s) { s.holder = Holder(s.holder); });
    fails("wrap", 1,
          [](Scene& s) { s.holder.prependError(-8, s.a.release(), s.b.release(), s.c.release()); });
    fails("list of error", 2, [](Scene& s) {
        List const list(s.error.get());
        s.error.release();
    });
    fails("list of holder", 2, [](Scene& s) { List list(s.holder); });
    fails("add holder", 1, [](Scene& s) { s.list.add(s.holder); });
    fails("replace", 1, [](Scene& s) { s.list.replace(s.position, s.holder); });
    fails("position", 1, [](Scene& s) { s.position = s.list.end(); });
    fails("positions", 12, [](Scene& s) {
        List::iterator other = s.list.begin();
        other++, other--;
        List::const_iterator constant(other), copy(constant);
        constant = std::as_const(s.list).begin();
        copy = s.list.end();
        copy++, copy--;
    });
    fails("error of exception", 2, [](Scene& s) { HLVError error(s.thrown); });
    fails("params", 8, [](Scene& s) {
        std::wstring const& wide = s.b->getDataString();
        Param(std::string(wide.begin(), wide.end())), Param(wide), Param(wide.c_str());
        Param(ResString(wide)), Param(HLVString(wide.size(), 'x')), Param("a narrow text");
        std::wstring out;
        s.b->getValue(out);
    });
    fails("texts", 2, [](Scene& s) {
        delete HLVError::makeError(-70'000);
        s.error->message();
    });
    fails("throwable", 1, [](Scene& s) { HLVErrorException e(nullptr, s.thrown.trace()); });
    fails("throwable of error", 1, [](Scene& s) {
        HLVErrorException e(s.error.release(), s.thrown.trace()); // is its own even if that fails
    });
    fails("exception", 4, [](Scene& s) {
        Exception const made(1, s.thrown.trace(), s.thrown.trace());
        Exception const copy(made);
    });
    fails("exception's trace", 1, [](Scene& s) { s.exception.addTrace("b"); });
    fails("copy throwable", 9, [](Scene& s) { HLVErrorException copy(s.thrown); });
    fails("trace", 1, [](Scene& s) { s.thrown.addTrace("b"); });
}

} // namespace
} // namespace Halvora::test
