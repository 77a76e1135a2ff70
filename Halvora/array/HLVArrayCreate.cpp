// The constructors: each names its element type, and nothing else.

#include <Halvora/array/HLVArray.h>

#include <Halvora/array/detail/Core.h>

namespace Halvora {

HLVArray::HLVArray(bool value) : HLVArray(1, &value) {}
HLVArray::HLVArray(unsigned char value) : HLVArray(1, &value) {}
HLVArray::HLVArray(short value) : HLVArray(1, &value) {}
HLVArray::HLVArray(int value) : HLVArray(1, &value) {}
HLVArray::HLVArray(long value) : HLVArray(1, &value) {}
HLVArray::HLVArray(long long const& value) : HLVArray(1, &value) {}
HLVArray::HLVArray(unsigned short value) : HLVArray(1, &value) {}
HLVArray::HLVArray(unsigned int value) : HLVArray(1, &value) {}
HLVArray::HLVArray(unsigned long value) : HLVArray(1, &value) {}
HLVArray::HLVArray(unsigned long long const& value) : HLVArray(1, &value) {}
HLVArray::HLVArray(float const& value) : HLVArray(1, &value) {}
HLVArray::HLVArray(double const& value) : HLVArray(1, &value) {}
HLVArray::HLVArray(Binary16 const& value) : HLVArray(1, &value) {}
HLVArray::HLVArray(std::wstring const& value) : HLVArray(1, &value) {}
HLVArray::HLVArray(ResString const& value) : HLVArray(1, &value) {}

HLVArray::HLVArray(unsigned short count, bool const* values) : m_type(DT_BOOL) {
    Core::build<DT_BOOL>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, unsigned char const* values) : m_type(DT_BYTE) {
    Core::build<DT_BYTE>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, short const* values) : m_type(DT_INT16) {
    Core::build<DT_INT16>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, int const* values) : m_type(DT_INT32) {
    Core::build<DT_INT32>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, long long const* values) : m_type(DT_INT64) {
    Core::build<DT_INT64>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, unsigned short const* values) : m_type(DT_UINT16) {
    Core::build<DT_UINT16>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, unsigned int const* values) : m_type(DT_UINT32) {
    Core::build<DT_UINT32>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, unsigned long long const* values) : m_type(DT_UINT64) {
    Core::build<DT_UINT64>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, float const* values) : m_type(DT_FLOAT) {
    Core::build<DT_FLOAT>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, double const* values) : m_type(DT_DOUBLE) {
    Core::build<DT_DOUBLE>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, Binary16 const* values) : m_type(DT_BINARY16) {
    Core::build<DT_BINARY16>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, std::wstring const* values) : m_type(DT_STRING) {
    Core::build<DT_STRING>(*this, count, values);
}
HLVArray::HLVArray(unsigned short count, ResString const* values) : m_type(DT_STRINGRES) {
    Core::build<DT_STRINGRES>(*this, count, values);
}

// `long` by its width, on every machine: see the header.
HLVArray::HLVArray(unsigned short count, long const* values)
    : m_type(sizeof(long) == sizeof(int) ? DT_INT32 : DT_INT64) {
    _set(values != nullptr ? count : 0, values, m_type, sizeof(long));
}
HLVArray::HLVArray(unsigned short count, unsigned long const* values)
    : m_type(sizeof(long) == sizeof(int) ? DT_UINT32 : DT_UINT64) {
    _set(values != nullptr ? count : 0, values, m_type, sizeof(long));
}

HLVArray HLVArray::createID(Binary16 const& value) {
    return createID(1, &value);
}
HLVArray HLVArray::createID(unsigned short count, Binary16 const* values) {
    HLVArray array(DT_ID);
    Core::build<DT_ID>(array, count, values);
    return array;
}
HLVArray HLVArray::createTick(unsigned long long const& value) {
    return createTick(1, &value);
}
HLVArray HLVArray::createTick(unsigned short count, unsigned long long const* values) {
    HLVArray array(DT_TICK);
    Core::build<DT_TICK>(array, count, values);
    return array;
}

} // namespace Halvora
