#include <Halvora/Halvora.h>

#include <iostream>

using namespace Halvora;

int main() {
    Binary16 const pump(0x12345678, 0x9ABC, 0xDEF0, 0x0102030405060708);
    HLVError::Holder holder = HLVError::create(-5, pump, 7);
    holder.prepend(-17, "pump station");

    HLVError::List reports;
    reports.add(holder);
    reports.add(HLVError::create(3)); // a warning

    std::cout << reports.getErrorCount() << " error, " << reports.getWarningCount() << " warning\n"
              << *reports.begin() << '\n';
}
