#pragma once

#include <Halvora/Export.h>
#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>

namespace Halvora {

// The version and build of a component. Two records are equal when the four parts of the version
// number are. An assignment that runs out of memory may leave texts of both records.
class HALVTYPES_API KrVersion {
public:
    // The version number, the build, the product and the file, each as given.
    KrVersion(unsigned int const& major, unsigned int const& minor, unsigned int const& build,
              unsigned int const& revision, std::string const& releaseType,
              std::string const& buildDate, std::string const& buildTime,
              std::string const& configuration, bool buildFlag, std::string const& platform,
              std::string const& compiler, unsigned int const& productMajor,
              unsigned int const& productMinor, std::string const& productName,
              std::string const& companyName, std::string const& fileDescription,
              std::string const& internalName, std::string const& legalCopyright,
              std::string const& originalFilename);

    // What is not given is 0, false or empty.
    KrVersion(unsigned int const& major, unsigned int const& minor, unsigned int const& build,
              unsigned int const& revision);
    KrVersion(unsigned int const& major, unsigned int const& minor);
    KrVersion();

    // The four parts of the version number, and the two of the product's.
    unsigned int getMajor() const noexcept { return m_nMajor; }
    unsigned int getMinor() const noexcept { return m_nMinor; }
    unsigned int getBuild() const noexcept { return m_nBuild; }
    unsigned int getRevision() const noexcept { return m_nRevision; }
    void getProductVersion(unsigned int& major, unsigned int& minor) const noexcept;

    // What was given of the build, the product and the file.
    std::string const& getReleaseType() const noexcept { return m_strReleaseType; }
    std::string const& getBuildDate() const noexcept { return m_strBuildDate; } // as __DATE__
    std::string const& getBuildTime() const noexcept { return m_strBuildTime; } // as __TIME__
    std::string const& getConfiguration() const noexcept { return m_strConfiguration; }
    bool getBuildFlag() const noexcept { return m_bBuildFlag; } // read by nothing here
    std::string const& getPlatform() const noexcept { return m_strPlatform; }
    std::string const& getCompiler() const noexcept { return m_strCompiler; }
    std::string const& getProductName() const noexcept { return m_strProductName; }
    std::string const& getCompanyName() const noexcept { return m_strCompanyName; }
    std::string const& getFileDescription() const noexcept { return m_strFileDescription; }
    std::string const& getInternalName() const noexcept { return m_strInternalName; }
    std::string const& getLegalCopyright() const noexcept { return m_strLegalCopyright; }
    std::string const& getOriginalFilename() const noexcept { return m_strOriginalFilename; }

    // By the four parts of the version number.
    bool operator==(KrVersion const& other) const noexcept;
    bool operator!=(KrVersion const& other) const noexcept { return !(*this == other); }

private:
    unsigned int m_nMajor = 0;
    unsigned int m_nProductMajor = 0;
    unsigned int m_nMinor = 0;
    unsigned int m_nProductMinor = 0;
    unsigned int m_nBuild = 0;
    unsigned int m_nRevision = 0;
    std::string m_strReleaseType;
    std::string m_strBuildDate;
    std::string m_strBuildTime;
    std::string m_strConfiguration;
    bool m_bBuildFlag = false;
    std::string m_strPlatform;
    std::string m_strCompiler;
    std::string m_strProductName;
    std::string m_strCompanyName;
    std::string m_strFileDescription;
    std::string m_strInternalName;
    std::string m_strLegalCopyright;
    std::string m_strOriginalFilename;
};

} // namespace Halvora

namespace std {

// "<major>.<minor>.<build>.<revision>", by the stream's own output of the numbers, and " (<release
// type>)" unless that is empty or "release".
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::KrVersion const& version);
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::KrVersion const& version);

} // namespace std

// Of the version number, which decides equality.
template <>
struct std::hash<Halvora::KrVersion> {
    std::size_t operator()(Halvora::KrVersion const& version) const noexcept {
        unsigned int const parts[] = {version.getMajor(), version.getMinor(), version.getBuild(),
                                      version.getRevision()};
        return std::hash<Halvora::Binary16>()(Halvora::Binary16(parts, sizeof parts));
    }
};
