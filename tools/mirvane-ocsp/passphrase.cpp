#include "passphrase.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <unistd.h>

#include <fcntl.h>

#include <algorithm>
#include <cstdlib>

#include "common/input.h"
#include "common/printable.h"
#include "platform/provider.h"

namespace tools {
namespace {

constexpr int kMostOctets = 1024;

// OpenSSL would read standard input where there is no terminal, and that may be a message.
bool isTerminalThere() {
    const int terminal = ::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (terminal >= 0) ::close(terminal);
    return terminal >= 0;
}

std::optional<std::string> askAtTerminal(std::string const& container) {
    if (!isTerminalThere()) return std::nullopt;
    const std::string prompt = "Passphrase for " + printable(container) + ": ";
    char text[kMostOctets] = {};
    const bool isRead = EVP_read_pw_string(text, sizeof text, prompt.c_str(), 0) == 0;
    std::optional<std::string> result = isRead ? std::optional<std::string>(text) : std::nullopt;
    OPENSSL_cleanse(text, sizeof text);
    return result;
}

std::string firstLine(std::string const& path) {
    const Octets octets = readFile(path, kMostOctets);
    const auto end = std::find_if(octets.begin(), octets.end(), [](int c) { return c == '\n' || c == '\r'; });
    return std::string(octets.begin(), end);
}

std::string read(std::string const& source) {
    const auto colon = source.find(':');
    const std::string kind = source.substr(0, colon);
    std::string rest = colon == std::string::npos ? "" : source.substr(colon + 1);
    if (kind == "pass" && colon != std::string::npos) return rest;
    if (kind == "file") return firstLine(rest);
    const char* const value = kind == "env" ? std::getenv(rest.c_str()) : nullptr;
    if (!value) throw InputError(source, "there is no such variable");
    return value;
}

}  // namespace

CLI::Option* addPassphraseOption(CLI::App* command, std::string& source) {
    const auto isSource = [](std::string& text) {
        const bool is = text.starts_with("pass:") || text.starts_with("env:") || text.starts_with("file:");
        return is ? std::string() : "give pass:TEXT, env:VARIABLE or file:PATH";
    };
    return command
        ->add_option(
            "--passin", source,
            "Passphrase of the key: pass:TEXT, env:VARIABLE or file:PATH; without it the terminal asks")
        ->type_name("SOURCE")
        ->check(CLI::Validator(isSource, ""));
}

PassphraseSource::PassphraseSource(std::string const& source) {
    if (!source.empty()) passphrase_ = read(source);
    MVCAPI_I_SetPassphraseCallback(&PassphraseSource::answer, this);
}

PassphraseSource::~PassphraseSource() {
    MVCAPI_I_SetPassphraseCallback(nullptr, nullptr);
    if (!passphrase_) return;
    std::string& octets = *passphrase_;
    OPENSSL_cleanse(octets.data(), octets.size());
}

int PassphraseSource::answer(void* source, const char* container, char* passphrase, int capacity) {
    PassphraseSource& self = *static_cast<PassphraseSource*>(source);
    if (!self.isAsked_ && !self.passphrase_) self.passphrase_ = askAtTerminal(container);
    self.isAsked_ = true;
    if (!self.passphrase_ || self.passphrase_->size() > static_cast<std::size_t>(capacity)) return -1;
    return static_cast<int>(self.passphrase_->copy(passphrase, self.passphrase_->size()));
}

}  // namespace tools
