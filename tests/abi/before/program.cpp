// A program as it was linked with the first libHalvTypes.so.3.0. Its binaries lie beside it and are
// never built again: they show that programs on boards go on running. It calls what a later header
// no longer offers, too.
#include <Halvora/Halvora.h>

#include <iostream>
#include <sstream>

using namespace Halvora;

namespace {

struct Names : ITranslator {
    void getTranslation(std::wostream& stream, ResString const& text) const override {
        stream << L'<' << text.c_str() << L'>';
    }
    void getTranslation(std::wostream& stream, Binary16 const&, wchar_t const*) const override {
        stream << L"<by id>";
    }
    ResString* getErrorDescription(int) const override { return nullptr; }
    wchar_t* getErrorName(int) const override { return nullptr; }
    ResString* getErrorParamDesc(int, int) const override { return nullptr; }
    std::string const& getLanguage() const override { return m_language; }

private:
    std::string m_language = "none";
};

void arrays() {
    HLVArray array(5L);
    array.add(HLVArray(array));
    std::wostringstream wide;
    wide << array << L' ' << HLVArray(7UL);
    std::cout << array.getCount() << ' ' << wide.str().size() << '\n';
}

void errors() {
    HLVError::Holder holder(new HLVError(-5, new HLVError::Param(5L), new HLVError::Param(L"text"),
                                         new HLVError::Param(Binary16::MAX)));
    holder.prependError(-17, new HLVError::Param(ResString(Binary16(7), L"station")));
    HLVError::List list;
    list += holder;
    for (HLVError::List::iterator at = list.begin(); !at.end(); ++at) {
        std::cout << *at << '\n';
    }
    try {
        throw HLVErrorException(HLVError::copy(list.getFirstError()), "here");
    } catch (std::exception const& e) {
        std::cout << e.what() << '\n';
    }
}

void texts() {
    static Names const names;
    ResString::setMainTranslator(&names);
    ResString2 const text(ResString(Binary16(7), L"text"));
    std::wostringstream translated;
    text.ToString(translated, names);
    VarChar const raw(Convert::toWString("raw"));
    std::cout << Convert::toAString(translated.str()) << ' ' << raw.length() << ' '
              << Convert::toAString(Binary16(1, 2, 3, 4)) << ' ' << Round::convert(12.345, 2)
              << '\n'
              << HalvTypes::ms_Version << '\n';
}

} // namespace

int main() {
    arrays();
    errors();
    texts();
}
