#pragma once

#include <Halvora/Export.h>
#include <Halvora/types/Binary16.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <type_traits>

namespace Halvora {

namespace detail {
template <typename T, typename Decayed = std::decay_t<T const&>>
using EnableIfPointer =
    std::enable_if_t<std::is_pointer_v<Decayed> || std::is_member_pointer_v<Decayed>>;
} // namespace detail

/// The version and build of a component: a version number of four parts, the version of the product
/// it belongs to, and texts about the build and the file. Two records are equal when their version
/// numbers are. An assignment that runs out of memory may leave texts of both records.
class HALVTYPES_API KrVersion {
public:
    /// Takes every field as given: the version number, the build, the product and the file.
    /// `releaseType` is what the text form shows; `buildDate` and `buildTime` are meant to be as
    /// `__DATE__` and `__TIME__`.
    KrVersion(unsigned int const& major, unsigned int const& minor, unsigned int const& build,
              unsigned int const& revision, std::string const& releaseType,
              std::string const& buildDate, std::string const& buildTime,
              std::string const& configuration, bool buildFlag, std::string const& platform,
              std::string const& compiler, unsigned int const& productMajor,
              unsigned int const& productMinor, std::string const& productName,
              std::string const& companyName, std::string const& fileDescription,
              std::string const& internalName, std::string const& legalCopyright,
              std::string const& originalFilename);

    /// A text or pointer is no build flag: most likely an argument is missing before it.
    template <typename Flag, typename = detail::EnableIfPointer<Flag>>
    KrVersion(unsigned int const& major, unsigned int const& minor, unsigned int const& build,
              unsigned int const& revision, std::string const& releaseType,
              std::string const& buildDate, std::string const& buildTime,
              std::string const& configuration, Flag const& buildFlag, std::string const& platform,
              std::string const& compiler, unsigned int const& productMajor,
              unsigned int const& productMinor, std::string const& productName,
              std::string const& companyName, std::string const& fileDescription,
              std::string const& internalName, std::string const& legalCopyright,
              std::string const& originalFilename) = delete;

    /// A version number only; the other numbers are 0, the flag false and the texts empty.
    KrVersion(unsigned int const& major, unsigned int const& minor, unsigned int const& build,
              unsigned int const& revision);
    /// The first two parts only; the other numbers are 0, the flag false and the texts empty.
    KrVersion(unsigned int const& major, unsigned int const& minor);
    /// All numbers 0, the flag false, all texts empty.
    KrVersion();

    /// The first part of the version number.
    unsigned int getMajor() const noexcept { return m_nMajor; }
    /// The second part of the version number.
    unsigned int getMinor() const noexcept { return m_nMinor; }
    /// The third part of the version number.
    unsigned int getBuild() const noexcept { return m_nBuild; }
    /// The fourth part of the version number.
    unsigned int getRevision() const noexcept { return m_nRevision; }
    /// Writes the two parts of the product's version into `major` and `minor`.
    void getProductVersion(unsigned int& major, unsigned int& minor) const noexcept;

    /// @name Of the build, the product and the file
    /// As they were given to the constructor; the texts belong to the record.
    /// @{

    /// Label of the release, shown by the text form.
    std::string const& getReleaseType() const noexcept { return m_strReleaseType; }
    /// When it was built, as `__DATE__`.
    std::string const& getBuildDate() const noexcept { return m_strBuildDate; }
    /// When it was built, as `__TIME__`.
    std::string const& getBuildTime() const noexcept { return m_strBuildTime; }
    /// Name of the build configuration.
    std::string const& getConfiguration() const noexcept { return m_strConfiguration; }
    /// A flag of the build; nothing in this library reads it.
    bool getBuildFlag() const noexcept { return m_bBuildFlag; }
    /// The platform it was built for.
    std::string const& getPlatform() const noexcept { return m_strPlatform; }
    /// The compiler and its version.
    std::string const& getCompiler() const noexcept { return m_strCompiler; }
    /// The product it belongs to.
    std::string const& getProductName() const noexcept { return m_strProductName; }
    /// The maker.
    std::string const& getCompanyName() const noexcept { return m_strCompanyName; }
    /// What the file is.
    std::string const& getFileDescription() const noexcept { return m_strFileDescription; }
    /// Name of the component.
    std::string const& getInternalName() const noexcept { return m_strInternalName; }
    /// Copyright line.
    std::string const& getLegalCopyright() const noexcept { return m_strLegalCopyright; }
    /// Name of the file as delivered.
    std::string const& getOriginalFilename() const noexcept { return m_strOriginalFilename; }
    /// @}

    /// Whether the four parts of the version number are equal; nothing else counts.
    bool operator==(KrVersion const& other) const noexcept;
    /// Whether one of the four parts of the version number differs.
    bool operator!=(KrVersion const& other) const noexcept { return !(*this == other); }

private:
    friend class HalvTypes; // which keeps the library's record

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

/// Writes the text form `major.minor.build.revision`, each number as the stream writes an unsigned
/// integer (base, width, locale), then a space and the release type in parentheses, unless that is
/// empty or "release". Returns `stream`; throws only what the stream is set to.
HALVTYPES_API ostream& operator<<(ostream& stream, Halvora::KrVersion const& version);
/// The same text on a wide stream; the release type is read as ISO 8859-1.
HALVTYPES_API wostream& operator<<(wostream& stream, Halvora::KrVersion const& version);

} // namespace std

/// Hash of the version number, which decides equality.
template <>
struct std::hash<Halvora::KrVersion> {
    /// Equal records give equal results.
    std::size_t operator()(Halvora::KrVersion const& version) const noexcept {
        unsigned int const parts[] = {version.getMajor(), version.getMinor(), version.getBuild(),
                                      version.getRevision()};
        return std::hash<Halvora::Binary16>()(Halvora::Binary16(parts, sizeof parts));
    }
};
