// Typed arrays: appending, overwriting, removing, copying one element out, reading, and what each
// result code means.

#include <Halvora/array/ArrayView.h>
#include <Halvora/array/HLVArray.h>

#include <iostream>

using namespace Halvora;

namespace {

char const* meaning(int result) {
    switch (result) {
    case 0: return "done";
    case ERR_OUT_OF_RANGE: return "outside the array, or more than 65,535 elements";
    case ERR_WRONG_TYPE: return "not the array's type";
    case ERR_NULL_POINTER: return "a run of values, but no pointer to them";
    default: return "unknown";
    }
}

void report(char const* what, int result) {
    std::cout << what << ": " << result << ", " << meaning(result) << '\n';
}

void print(HLVArray const& array) {
    unsigned short count = 0;
    int const* values = nullptr;
    array.getInt32(count, values);
    std::cout << HalvTypes::dataTypeToString(array.getDataType()) << ", " << array.getByteSize()
              << " bytes:";
    for (int i = 0; i < count; ++i) {
        std::cout << ' ' << values[i];
    }
    std::cout << "\n\n";
}

} // namespace

int main() {
    // An array without storage adopts the type of the first value.
    HLVArray array(DT_VOID);
    report("append 10", array.addInt32(10));
    array.addInt32(20);
    array.addInt32(30);
    array.addInt32(40);
    print(array);

    int const values[] = {21, 31};
    report("overwrite two from 1 on", array.setRangeInt32(1, 2, values));
    report("overwrite two from 3 on", array.setRangeInt32(3, 2, values));
    report("overwrite two from nowhere", array.setRangeInt32(0, 2, nullptr));
    report("append a double", array.addDouble(0.5));
    report("overwrite element 4", array.setInt32(4, 0));
    print(array);

    report("remove two from 1 on", array.removeRange(1, 2));
    report("remove two from 1 on", array.removeRange(1, 2));
    print(array);

    // One element comes out as an array of its own; there is none behind the end.
    std::cout << "element 1: ";
    print(array[1]);
    std::cout << "element 2: " << array[2].getCount() << " elements of type "
              << HalvTypes::dataTypeToString(array[2].getDataType()) << "\n\n";

    report("append itself", array.add(array));
    print(array);

    // Emptied, it still holds storage and so keeps its type; cleared, it adopts one again.
    array.removeRange(0, array.getCount());
    report("append a double to the emptied array", array.addDouble(0.5));
    array.clear(DT_VOID);
    report("append a double to the cleared array", array.addDouble(0.5));
    std::cout << "written to a stream, count and type: " << array << '\n';

    // Braces hold the elements, which are of one type.
    HLVArray const levels({0.25, 0.5, 0.125});
    for (double const level : viewOf<double>(levels)) {
        std::cout << level << ' ';
    }
    std::cout << "are " << HalvTypes::dataTypeToString(levels.getDataType()) << '\n';
}
