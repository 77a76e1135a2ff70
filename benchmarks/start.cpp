// As little as a program does that is linked with one library, or with none: what starting costs.

#include <cstddef>
#include <string>

#if defined(HALVTYPES_START_OURS)
#    include <Halvora/types/HalvTypes.h>
#elif defined(HALVTYPES_START_QT)
#    include <QString>
#elif defined(HALVTYPES_START_GLIB)
#    include <glib.h>
#endif

namespace {

std::size_t nameLength(int argc) {
#if defined(HALVTYPES_START_OURS)
    return std::string(Halvora::HalvTypes::dataTypeToString(Halvora::eDataType(argc))).size();
#elif defined(HALVTYPES_START_QT)
    return QString::number(argc).toStdString().size();
#elif defined(HALVTYPES_START_GLIB)
    return std::string(g_quark_to_string(g_quark_from_static_string("BOOL"))).size() + argc - 1;
#else
    return std::to_string(argc).size();
#endif
}

} // namespace

int main(int argc, char**) {
    return nameLength(argc) != 0 ? 0 : 1;
}
