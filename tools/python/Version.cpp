#include "Module.h"

#include <Halvora/types/HalvTypes.h>
#include <Halvora/version/KrVersion.h>

#include <sstream>
#include <utility>

namespace HalvPython {

using namespace Halvora;

namespace {

std::string shown(KrVersion const& version) {
    std::ostringstream stream;
    stream << version;
    return stream.str();
}

std::pair<unsigned, unsigned> productVersion(KrVersion const& version) {
    std::pair<unsigned, unsigned> product;
    version.getProductVersion(product.first, product.second);
    return product;
}

void addMaking(py::class_<KrVersion>& type) {
    using Text = std::string const&;
    type.def(py::init<>(), "All parts 0, all texts empty.")
        .def(py::init<unsigned, unsigned>(), py::arg("major"), py::arg("minor"),
             "The first two parts.")
        .def(py::init<unsigned, unsigned, unsigned, unsigned>(), py::arg("major"), py::arg("minor"),
             py::arg("build"), py::arg("revision"), "The four parts.")
        .def(py::init<unsigned, unsigned, unsigned, unsigned, Text, Text, Text, Text, bool, Text,
                      Text, unsigned, unsigned, Text, Text, Text, Text, Text, Text>(),
             py::arg("major"), py::arg("minor"), py::arg("build"), py::arg("revision"),
             py::arg("releaseType"), py::arg("buildDate"), py::arg("buildTime"),
             py::arg("configuration"), py::arg("buildFlag").noconvert(), py::arg("platform"),
             py::arg("compiler"), py::arg("productMajor"), py::arg("productMinor"),
             py::arg("productName"), py::arg("companyName"), py::arg("fileDescription"),
             py::arg("internalName"), py::arg("legalCopyright"), py::arg("originalFilename"),
             "Everything.");
}

void addParts(py::class_<KrVersion>& type) {
    auto const get = [&type](char const* name, auto getter, char const* doc) {
        type.def(name, getter, py::return_value_policy::copy, doc);
    };
    get("getMajor", &KrVersion::getMajor, "The first part.");
    get("getMinor", &KrVersion::getMinor, "The second part.");
    get("getBuild", &KrVersion::getBuild, "The third part.");
    get("getRevision", &KrVersion::getRevision, "The fourth part.");
    get("getProductVersion", &productVersion, "The two parts of the product's version.");
    get("getReleaseType", &KrVersion::getReleaseType, "Label of the release.");
    get("getBuildDate", &KrVersion::getBuildDate, "The day it was built.");
    get("getBuildTime", &KrVersion::getBuildTime, "The time it was built.");
    get("getConfiguration", &KrVersion::getConfiguration, "Name of the build configuration.");
    get("getBuildFlag", &KrVersion::getBuildFlag, "A flag of the build.");
    get("getPlatform", &KrVersion::getPlatform, "The platform it was built for.");
    get("getCompiler", &KrVersion::getCompiler, "The compiler and its version.");
    get("getProductName", &KrVersion::getProductName, "The product it belongs to.");
    get("getCompanyName", &KrVersion::getCompanyName, "The maker.");
    get("getFileDescription", &KrVersion::getFileDescription, "What the file is.");
    get("getInternalName", &KrVersion::getInternalName, "Name of the component.");
    get("getLegalCopyright", &KrVersion::getLegalCopyright, "Copyright line.");
    get("getOriginalFilename", &KrVersion::getOriginalFilename, "Name of the file as delivered.");
}

} // namespace

void addVersion(py::module_& module) {
    py::class_<KrVersion> type(module, "KrVersion",
                               "The version and build of a component; equal when the four parts of "
                               "the version number are.");
    addMaking(type);
    addParts(type);
    type.def("__str__", &shown).def("__repr__", [](KrVersion const& version) {
        return "<KrVersion " + shown(version) + ">";
    });
    addEquality(type);
    module.attr("HalvTypes").attr("ms_Version") = HalvTypes::ms_Version;
    module.attr("__version__") = shown(HalvTypes::ms_Version);
}

} // namespace HalvPython
