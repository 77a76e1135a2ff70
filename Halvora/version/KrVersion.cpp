#include <Halvora/version/KrVersion.h>

#include <ostream>

#include <Halvora/text/Convert.h>

namespace Halvora {

namespace {

std::string const& textFor(std::ostream const&, std::string const& text) {
    return text;
}

std::wstring textFor(std::wostream const&, std::string const& text) {
    return Convert::toWString(text);
}

// Narrow characters go through the stream's own widening on a wide stream.
template <typename Stream>
Stream& write(Stream& stream, KrVersion const& version) {
    stream << version.getMajor() << '.' << version.getMinor() << '.' << version.getBuild() << '.'
           << version.getRevision();
    std::string const& releaseType = version.getReleaseType();
    if (!releaseType.empty() && releaseType != "release") {
        stream << " (" << textFor(stream, releaseType) << ')';
    }
    return stream;
}

} // namespace

KrVersion::KrVersion(unsigned int const& major, unsigned int const& minor,
                     unsigned int const& build, unsigned int const& revision,
                     std::string const& releaseType, std::string const& buildDate,
                     std::string const& buildTime, std::string const& configuration, bool buildFlag,
                     std::string const& platform, std::string const& compiler,
                     unsigned int const& productMajor, unsigned int const& productMinor,
                     std::string const& productName, std::string const& companyName,
                     std::string const& fileDescription, std::string const& internalName,
                     std::string const& legalCopyright, std::string const& originalFilename)
    : m_nMajor(major),
      m_nProductMajor(productMajor),
      m_nMinor(minor),
      m_nProductMinor(productMinor),
      m_nBuild(build),
      m_nRevision(revision),
      m_strReleaseType(releaseType),
      m_strBuildDate(buildDate),
      m_strBuildTime(buildTime),
      m_strConfiguration(configuration),
      m_bBuildFlag(buildFlag),
      m_strPlatform(platform),
      m_strCompiler(compiler),
      m_strProductName(productName),
      m_strCompanyName(companyName),
      m_strFileDescription(fileDescription),
      m_strInternalName(internalName),
      m_strLegalCopyright(legalCopyright),
      m_strOriginalFilename(originalFilename) {}

KrVersion::KrVersion(unsigned int const& major, unsigned int const& minor,
                     unsigned int const& build, unsigned int const& revision)
    : m_nMajor(major), m_nMinor(minor), m_nBuild(build), m_nRevision(revision) {}

KrVersion::KrVersion(unsigned int const& major, unsigned int const& minor)
    : m_nMajor(major), m_nMinor(minor) {}

KrVersion::KrVersion() = default;

void KrVersion::getProductVersion(unsigned int& major, unsigned int& minor) const noexcept {
    major = m_nProductMajor;
    minor = m_nProductMinor;
}

bool KrVersion::operator==(KrVersion const& other) const noexcept {
    return m_nMajor == other.m_nMajor && m_nMinor == other.m_nMinor && m_nBuild == other.m_nBuild &&
           m_nRevision == other.m_nRevision;
}

} // namespace Halvora

std::ostream& std::operator<<(std::ostream& stream, Halvora::KrVersion const& version) {
    return Halvora::write(stream, version);
}

std::wostream& std::operator<<(std::wostream& stream, Halvora::KrVersion const& version) {
    return Halvora::write(stream, version);
}
