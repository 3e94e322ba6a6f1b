#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include <zoncore/Export.h>
#include <zoncore/UString.h>

namespace zoncore {

/// The process-wide table of messages in the current language.
///
/// A message is named by a literal of the form "$$$/library/Key=English text". The part before "=" is its key; the part
/// after it is the message when no translation is installed. Safe to use from several threads.
class ZONCORE_API Localizer {
public:
    static Localizer& Get();

    Localizer(const Localizer&) = delete;
    Localizer& operator=(const Localizer&) = delete;
    virtual ~Localizer();

    /// @param keyLiteral  The whole literal, key and English text, in UTF-8; not null.
    /// @return The installed translation of the key, else the English text. A literal without "=" that has no
    ///         translation is returned as it stands, so that a missing text shows up as its key.
    virtual UString GetLocalizedString(const char* keyLiteral) const;

    /// Installs the texts of the current language, by key ("$$$/library/Key"), in place of all earlier ones. An empty
    /// map goes back to English.
    void SetTranslations(std::map<std::string, UString> translations);

private:
    using Translations = std::map<std::string, UString>;

    ZONCORE_LOCAL Localizer();

    mutable std::mutex mMutex;
    std::shared_ptr<const Translations> mTranslations; // never null; replaced as a whole
};

} // namespace zoncore
