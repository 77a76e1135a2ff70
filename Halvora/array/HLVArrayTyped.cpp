// The typed operations: each names its element type, and nothing else.

#include <Halvora/array/HLVArray.h>

#include <Halvora/array/detail/Core.h>

namespace Halvora {

int HLVArray::setBool(unsigned short index, bool value) {
    return Core::set<DT_BOOL>(*this, index, 1, &value);
}
int HLVArray::setByte(unsigned short index, unsigned char value) {
    return Core::set<DT_BYTE>(*this, index, 1, &value);
}
int HLVArray::setInt16(unsigned short index, short value) {
    return Core::set<DT_INT16>(*this, index, 1, &value);
}
int HLVArray::setInt32(unsigned short index, int value) {
    return Core::set<DT_INT32>(*this, index, 1, &value);
}
int HLVArray::setInt64(unsigned short index, long long const& value) {
    return Core::set<DT_INT64>(*this, index, 1, &value);
}
int HLVArray::setUInt16(unsigned short index, unsigned short value) {
    return Core::set<DT_UINT16>(*this, index, 1, &value);
}
int HLVArray::setUInt32(unsigned short index, unsigned int value) {
    return Core::set<DT_UINT32>(*this, index, 1, &value);
}
int HLVArray::setUInt64(unsigned short index, unsigned long long const& value) {
    return Core::set<DT_UINT64>(*this, index, 1, &value);
}
int HLVArray::setFloat(unsigned short index, float const& value) {
    return Core::set<DT_FLOAT>(*this, index, 1, &value);
}
int HLVArray::setDouble(unsigned short index, double const& value) {
    return Core::set<DT_DOUBLE>(*this, index, 1, &value);
}
int HLVArray::setTick(unsigned short index, unsigned long long const& value) {
    return Core::set<DT_TICK>(*this, index, 1, &value);
}
int HLVArray::setID(unsigned short index, Binary16 const& value) {
    return Core::set<DT_ID>(*this, index, 1, &value);
}
int HLVArray::setBin16(unsigned short index, Binary16 const& value) {
    return Core::set<DT_BINARY16>(*this, index, 1, &value);
}
int HLVArray::setString(unsigned short index, std::wstring const& value) {
    return Core::set<DT_STRING>(*this, index, 1, &value);
}
int HLVArray::setResString(unsigned short index, ResString const& value) {
    return Core::set<DT_STRINGRES>(*this, index, 1, &value);
}

int HLVArray::addBool(bool value) {
    return Core::add<DT_BOOL>(*this, value);
}
int HLVArray::addByte(unsigned char value) {
    return Core::add<DT_BYTE>(*this, value);
}
int HLVArray::addInt16(short value) {
    return Core::add<DT_INT16>(*this, value);
}
int HLVArray::addInt32(int value) {
    return Core::add<DT_INT32>(*this, value);
}
int HLVArray::addInt64(long long const& value) {
    return Core::add<DT_INT64>(*this, value);
}
int HLVArray::addUInt16(unsigned short value) {
    return Core::add<DT_UINT16>(*this, value);
}
int HLVArray::addUInt32(unsigned int value) {
    return Core::add<DT_UINT32>(*this, value);
}
int HLVArray::addUInt64(unsigned long long const& value) {
    return Core::add<DT_UINT64>(*this, value);
}
int HLVArray::addFloat(float const& value) {
    return Core::add<DT_FLOAT>(*this, value);
}
int HLVArray::addDouble(double const& value) {
    return Core::add<DT_DOUBLE>(*this, value);
}
int HLVArray::addTick(unsigned long long const& value) {
    return Core::add<DT_TICK>(*this, value);
}
int HLVArray::addID(Binary16 const& value) {
    return Core::add<DT_ID>(*this, value);
}
int HLVArray::addBin16(Binary16 const& value) {
    return Core::add<DT_BINARY16>(*this, value);
}
int HLVArray::addString(std::wstring const& value) {
    return Core::add<DT_STRING>(*this, value);
}
int HLVArray::addResString(ResString const& value) {
    return Core::add<DT_STRINGRES>(*this, value);
}

int HLVArray::setRangeBool(unsigned short start, unsigned short count, bool const* values) {
    return Core::set<DT_BOOL>(*this, start, count, values);
}
int HLVArray::setRangeByte(unsigned short start, unsigned short count,
                           unsigned char const* values) {
    return Core::set<DT_BYTE>(*this, start, count, values);
}
int HLVArray::setRangeInt16(unsigned short start, unsigned short count, short const* values) {
    return Core::set<DT_INT16>(*this, start, count, values);
}
int HLVArray::setRangeInt32(unsigned short start, unsigned short count, int const* values) {
    return Core::set<DT_INT32>(*this, start, count, values);
}
int HLVArray::setRangeInt64(unsigned short start, unsigned short count, long long const* values) {
    return Core::set<DT_INT64>(*this, start, count, values);
}
int HLVArray::setRangeUInt16(unsigned short start, unsigned short count,
                             unsigned short const* values) {
    return Core::set<DT_UINT16>(*this, start, count, values);
}
int HLVArray::setRangeUInt32(unsigned short start, unsigned short count,
                             unsigned int const* values) {
    return Core::set<DT_UINT32>(*this, start, count, values);
}
int HLVArray::setRangeUInt64(unsigned short start, unsigned short count,
                             unsigned long long const* values) {
    return Core::set<DT_UINT64>(*this, start, count, values);
}
int HLVArray::setRangeFloat(unsigned short start, unsigned short count, float const* values) {
    return Core::set<DT_FLOAT>(*this, start, count, values);
}
int HLVArray::setRangeDouble(unsigned short start, unsigned short count, double const* values) {
    return Core::set<DT_DOUBLE>(*this, start, count, values);
}
int HLVArray::setRangeTick(unsigned short start, unsigned short count,
                           unsigned long long const* values) {
    return Core::set<DT_TICK>(*this, start, count, values);
}
int HLVArray::setRangeID(unsigned short start, unsigned short count, Binary16 const* values) {
    return Core::set<DT_ID>(*this, start, count, values);
}
int HLVArray::setRangeBin16(unsigned short start, unsigned short count, Binary16 const* values) {
    return Core::set<DT_BINARY16>(*this, start, count, values);
}
int HLVArray::setRangeString(unsigned short start, unsigned short count,
                             std::wstring const* values) {
    return Core::set<DT_STRING>(*this, start, count, values);
}
int HLVArray::setRangeResString(unsigned short start, unsigned short count,
                                ResString const* values) {
    return Core::set<DT_STRINGRES>(*this, start, count, values);
}

int HLVArray::getBool(unsigned short& count, bool const*& values) const {
    return Core::get<DT_BOOL>(*this, count, values);
}
int HLVArray::getByte(unsigned short& count, unsigned char const*& values) const {
    return Core::get<DT_BYTE>(*this, count, values);
}
int HLVArray::getInt16(unsigned short& count, short const*& values) const {
    return Core::get<DT_INT16>(*this, count, values);
}
int HLVArray::getInt32(unsigned short& count, int const*& values) const {
    return Core::get<DT_INT32>(*this, count, values);
}
int HLVArray::getInt64(unsigned short& count, long long const*& values) const {
    return Core::get<DT_INT64>(*this, count, values);
}
int HLVArray::getUInt16(unsigned short& count, unsigned short const*& values) const {
    return Core::get<DT_UINT16>(*this, count, values);
}
int HLVArray::getUInt32(unsigned short& count, unsigned int const*& values) const {
    return Core::get<DT_UINT32>(*this, count, values);
}
int HLVArray::getUInt64(unsigned short& count, unsigned long long const*& values) const {
    return Core::get<DT_UINT64>(*this, count, values);
}
int HLVArray::getFloat(unsigned short& count, float const*& values) const {
    return Core::get<DT_FLOAT>(*this, count, values);
}
int HLVArray::getDouble(unsigned short& count, double const*& values) const {
    return Core::get<DT_DOUBLE>(*this, count, values);
}
int HLVArray::getTick(unsigned short& count, unsigned long long const*& values) const {
    return Core::get<DT_TICK>(*this, count, values);
}
int HLVArray::getID(unsigned short& count, Binary16 const*& values) const {
    return Core::get<DT_ID>(*this, count, values);
}
int HLVArray::getBin16(unsigned short& count, Binary16 const*& values) const {
    return Core::get<DT_BINARY16>(*this, count, values);
}
int HLVArray::getString(unsigned short& count, std::wstring const*& values) const {
    return Core::get<DT_STRING>(*this, count, values);
}
int HLVArray::getResString(unsigned short& count, ResString const*& values) const {
    return Core::get<DT_STRINGRES>(*this, count, values);
}

} // namespace Halvora
