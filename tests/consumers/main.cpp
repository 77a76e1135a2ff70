// What every way of getting the library has to give: values, text and an error that crosses the
// library's boundary, in a program of its own.
#include <Halvora/Halvora.h>

#include <iostream>
#include <sstream>

int main() {
    using namespace Halvora;

    HLVString text;
    Convert::toHLVString(text, std::string("Halvora"));
    text.append(1000, text[0]);

    HLVArray const numbers(DT_INT32);
    HLVError::Holder holder(new HLVError(-5));
    holder.prependError(-6);

    bool caught = false;
    try {
        throw HLVErrorException(holder.extractError(), "consumer");
    } catch (std::exception const& e) {
        caught = dynamic_cast<HLVErrorException const*>(&e) != nullptr;
    }

    std::ostringstream version;
    version << HalvTypes::ms_Version;

    bool const good = Binary16() == Binary16::EMPTY && text.size() == 1007 &&
                      numbers.getCount() == 0 && caught && !version.str().empty();
    std::cout << (good ? "good" : "BAD") << "\n";
    return good ? 0 : 1;
}
