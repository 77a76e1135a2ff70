// Objects for a debugger to look at: all of them stand when `ready` is called, some damaged as by a
// bug whose trace is to be read. Compiled with access to their members.
#include <Halvora/Halvora.h>

#include <cstdlib>
#include <cstring>
#include <string>

using namespace Halvora;
using Param = HLVError::Param;
using List = HLVError::List;

extern "C" void ready() {
    std::abort();
}

Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
unsigned short const units[] = {'n', 0x17E, 0xEF, 0x4E2D, 0xD83D, 0, '"', '\\', 7, '\n'};
std::wstring const wide(L"na\u00efve \u4e2d"), texts[] = {wide, L"", L"third\U0001F600"};
int const numbers[] = {10, -20, 30};

HLVString noText, text(units, 10), longText(23, 'x'), wildText(text);
ResString noRes, res(id, wide), overlongRes(id, std::wstring(128, L'r'));
ResString2 res2(id, wide), res2WithoutId(Binary16::EMPTY, "no id"), wildRes2(res2);
VarChar varChar("v\xE9"), overlongVarChar(std::wstring(512, L'v'));

HLVArray arrays[] = {
    HLVArray(DT_VOID), HLVArray(true),        HLVArray(static_cast<unsigned char>(65)),
    HLVArray(0.25),    HLVArray(short{-2}),   HLVArray(static_cast<unsigned short>(65535)),
    HLVArray(0.5F),    HLVArray(5U),          HLVArray(-4LL),
    HLVArray(6ULL),    HLVArray(3, numbers),  HLVArray::createTick(8),
    HLVArray(id),      HLVArray(3, texts),    HLVArray::createID(id),
    HLVArray(res),     HLVArray(DT_STRINGRES)};
HLVArray wildType(arrays[10]), wildCount(arrays[10]), wildData(arrays[10]), wildTexts(arrays[13]);

Param params[] = {Param(true), Param(short{-2}), Param(3U),  Param(-4LL), Param(0.5F),
                  Param(id),   Param(res),       Param(L""), Param(wide)};
Param wildParam(id), wildParamText(wide);

HLVError::Holder noError, holder, deep, looped, cut, wildHolder;
List noErrors, list, loopedList, cutList, wildEntry, wildList;
KrVersion version(3, 1), fullVersion(HalvTypes::ms_Version), wildVersion(1, 2, 3, 4);

HLVErrorException exception(new HLVError(-8), "here");
Exception plainException(-7, "message", "here");
List::iterator position, wildIterator;
List::const_iterator endPosition;
ArrayView<int> view(viewOf<int>(arrays[10])), wildView(reinterpret_cast<int*>(8), 0xFFFFFFFF);
ArrayView<std::wstring> textView(viewOf<std::wstring>(arrays[13]));

// In both standard libraries the second word of a long text is its length, the first two words of a
// list and of its nodes are the links, which lie before the entry.
void*& word(void* object, int number) {
    return static_cast<void**>(object)[number];
}

template <typename T>
void fill(T& object) {
    std::memset(static_cast<void*>(&object), 0xFF, sizeof object);
}

void damage() {
    auto const wild = reinterpret_cast<HLVError*>(8);
    word(&longText, 1) = reinterpret_cast<void*>(0x7FFFFFFF);
    fill(wildText);
    fill(wildRes2.m_text);
    fill(wildParamText.m_dataString);
    fill(wildVersion.m_strBuildDate);
    fill(static_cast<std::wstring*>(wildTexts.m_data)[1]);
    overlongRes.m_length = 129;
    overlongVarChar.m_length = 65535;
    wildParam.m_type = wildType.m_type = static_cast<eDataType>(99);
    wildCount.m_count = 65535;
    wildData.m_data = wildHolder.m_error = wild;

    HLVError* const second = looped.m_error->m_precedingError;
    second->m_precedingError->m_precedingError = second;
    cut.m_error->m_params[0] = reinterpret_cast<Param*>(wild);
    cut.m_error->m_precedingError->m_precedingError = wild;
    for (int link : {0, 1}) {
        word(word(loopedList.m_entries, link), link) = word(loopedList.m_entries, link);
        word(word(cutList.m_entries, link), link) = wild;
    }
    word(word(wildEntry.m_entries, 0), 2) = wild;
    word(&wildList.m_entries, 0) = word(&wildIterator.m_position, 0) = wild;
}

int main() {
    holder.prependError(-3, new Param("base"));
    holder.prependError(-4, reinterpret_cast<void*>(0x1234), nullptr, new Param(7), nullptr);
    holder.prependError(-5, new Param(id), nullptr, new Param("top"));
    looped = cut = holder;
    for (int code = -100000; code < 0; ++code) {
        deep.prependError(code);
    }
    for (List* target : {&list, &loopedList, &cutList, &wildEntry}) {
        target->add(HLVError::copy(holder.getError()));
    }
    list.add(new HLVError(9));
    position = list.begin();
    endPosition = list.end();
    damage();
    ready();
}
