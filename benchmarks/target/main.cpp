// What each operation takes on a target; with the argument `ram`, what each class and an error take
// of it. Any other argument: the emulator counts.
#include "Measure.h"

#include <Halvora/Halvora.h>

using namespace Halvora;

namespace {

void measureTexts(std::size_t size) {
    std::string const narrow = textOf(size, "quick \xE9lan "), ascii = textOf(size, "quick brown "),
                      line = textOf(size, "ab,\"c,d\",efgh,,"), padded = "  " + ascii + "  ";
    std::wstring const wide = Convert::toWString(narrow);
    HLVString units;
    Convert::toHLVString(units, narrow);
    std::string utf8, toNarrow(size, ' '), bytes(4 * size, ' ');
    Utf8::fromWString(utf8, wide);
    std::wstring toWide(size, L' ');
    HLVString toUnits(size, ' ');
    std::vector<std::string> fields;

    measure("memcpy, 4 bytes each", size,
            [&] { std::memcpy(bytes.data(), wide.data(), 4 * size); });
    measure("Latin-1 to wide", size, [&] { Convert::toWString(toWide, narrow); });
    measure("Latin-1 to 16-bit", size, [&] { Convert::toHLVString(toUnits, narrow); });
    measure("wide to Latin-1", size,
            [&] { Convert::toAString(toNarrow, unsigned(size), wide.data()); });
    measure("wide to 16-bit", size, [&] { Convert::toHLVString(toUnits, wide); });
    measure("16-bit to Latin-1", size,
            [&] { Convert::toAString(toNarrow, unsigned(size), units.data()); });
    measure("16-bit to wide", size, [&] { Convert::toWString(toWide, units); });
    measure("UTF-8 to wide, ASCII", size, [&] { Utf8::toWString(toWide, ascii); });
    measure("UTF-8 to wide", size, [&] { Utf8::toWString(toWide, utf8); });
    measure("wide to UTF-8", size, [&] { Utf8::fromWString(toNarrow, wide); });
    if (size > 256) {
        return;
    }
    measure("split", size, [&] { Convert::split(line, ',', fields); });
    measure("split, quoted", size, [&] { Convert::splitQuoted(line, ',', fields); });
    measure("trim a copy", size, [&] { Convert::trim(toNarrow = padded, Convert::ms_strTrim); });
}

void measureArrays(unsigned short size) {
    HLVArray numbers(DT_INT32), texts(DT_STRING);
    std::vector<int> const values(size, 7);
    for (int i = 0; i < size; ++i) {
        numbers.addInt32(i);
        texts.addString(std::wstring(L"a text beyond the short ones"));
    }
    measure("array: append numbers", size, [size] {
        HLVArray array(DT_INT32);
        for (int i = 0; i < size; ++i) {
            array.addInt32(i);
        }
    });
    measure("array: set each number", size, [&] {
        for (unsigned short i = 0; i < size; ++i) {
            numbers.setInt32(i, i);
        }
    });
    measure("array: set a range", size, [&] { numbers.setRangeInt32(0, size, values.data()); });
    measure("array: copy numbers", size, [&] { HLVArray const copy(numbers); });
    measure("array: copy texts", size, [&] { HLVArray const copy(texts); });
}

void measureSingles() {
    Binary16 const id(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    Binary16 parsed;
    char form[36];
    ResString const text(id, std::wstring(20, L't'));
    char slot[300];
    HLVError::Holder chain = HLVError::create(-1, 1, 2, 3);
    chain.prepend(-2, L"one text");
    HLVError::List list;
    for (int i = 0; i < 16; ++i) {
        list.add(HLVError::create(-i - 1));
    }
    float volatile number = 2.34567f;
    measure("identifier: grouped text", 1, [&] { id.toGrouped(form, 36); });
    measure("identifier: parse", 1,
            [&] { static_cast<void>(parseBinary16(std::string_view(form, 36), parsed)); });
    measure("resource text: construct", 20, [&] { ResString const copy(id, text.wstr()); });
    measure("resource text: into a slot", 20, [&] { ResString::set(&text, 40, slot); });
    measure("raw text: into a slot", 20,
            [&] { VarChar::set(L"20 units of a text..", 20, 40, slot); });
    measure("round", 1, [&] { number = Round::round(2.34567f, 2); });
    measure("error: three parameters", 3, [] { static_cast<void>(HLVError::create(-1, 1, 2, 3)); });
    measure("error: copy a chain of two", 2, [&] { HLVError::Holder const copy(chain); });
    measure("list: walk", 16, [&] {
        for (HLVError const* error : list) {
            number = static_cast<float>(error->getCode());
        }
    });
    measure("exception: throw and catch", 1, [] {
        try {
            throw Exception(1, "message", "trace");
        } catch (Exception const&) {
        }
    });
}

void printRam() {
    std::pair<char const*, std::size_t> const classes[] = {
        {"Binary16",                       sizeof(Binary16)                      },
        {"HLVArray",                       sizeof(HLVArray)                      },
        {"ArrayView",                      sizeof(ArrayView<int>)                },
        {"HLVString",                      sizeof(HLVString)                     },
        {"ResString",                      sizeof(ResString)                     },
        {"ResString2",                     sizeof(ResString2)                    },
        {"VarChar",                        sizeof(VarChar)                       },
        {"CsvReader",                      sizeof(CsvReader)                     },
        {"HLVError",                       sizeof(HLVError)                      },
        {"HLVError::Param",                sizeof(HLVError::Param)               },
        {"HLVError::Holder",               sizeof(HLVError::Holder)              },
        {"HLVError::List",                 sizeof(HLVError::List)                },
        {"HLVError::List::iterator",       sizeof(HLVError::List::iterator)      },
        {"HLVError::List::const_iterator", sizeof(HLVError::List::const_iterator)},
        {"HLVErrorException",              sizeof(HLVErrorException)             },
        {"Exception",                      sizeof(Exception)                     },
        {"Catalogue",                      sizeof(Catalogue)                     },
        {"CatalogueTranslator",            sizeof(CatalogueTranslator)           },
        {"KrVersion",                      sizeof(KrVersion)                     },
    };
    for (auto const& [name, size] : classes) {
        std::printf("`%s`;%zu\n", name, size);
    }
    // The first ones take what the C library has at hand and counts as taken.
    std::vector<HLVError::Holder> errors(20);
    std::size_t before = 0;
    for (HLVError::Holder& error : errors) {
        before = mallinfo2().uordblks;
        error = HLVError::create(-1, 1, 2, 3);
    }
    std::printf("an error with three numbers, on the heap;%zu\n",
                static_cast<std::size_t>(mallinfo2().uordblks) - before);
}

} // namespace

int main(int count, char** arguments) {
    if (count > 1 && std::string_view(arguments[1]) == "ram") {
        printRam();
        return 0;
    }
    isCounted = count > 1;
    for (std::size_t const size : {16u, 256u, 4096u}) {
        measureTexts(size);
        size > 256 ? void() : measureArrays(static_cast<unsigned short>(size));
    }
    measureSingles();
}
