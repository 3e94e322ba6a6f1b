#include <zoncore/Localizer.h>

#include <utility>

namespace zoncore {

Localizer& Localizer::Get() {
    static Localizer instance;
    return instance;
}

Localizer::Localizer() : mTranslations(std::make_shared<const Translations>()) {}
Localizer::~Localizer() = default;

UString Localizer::GetLocalizedString(const char* keyLiteral) const {
    const std::string literal(keyLiteral);
    const std::size_t equals = literal.find('=');
    const auto translations = [this] {
        const std::lock_guard lock(mMutex);
        return mTranslations;
    }();
    if (const auto found = translations->find(literal.substr(0, equals)); found != translations->end()) {
        return found->second;
    }
    return UTF8to16(equals == std::string::npos ? literal : literal.substr(equals + 1));
}

void Localizer::SetTranslations(std::map<std::string, UString> translations) {
    auto replacement = std::make_shared<const Translations>(std::move(translations));
    const std::lock_guard lock(mMutex);
    mTranslations.swap(replacement);
}

} // namespace zoncore
