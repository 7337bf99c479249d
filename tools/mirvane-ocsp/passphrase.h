// Passphrases of private keys.
#ifndef MIRVANE_TOOLS_MIRVANE_OCSP_PASSPHRASE_H
#define MIRVANE_TOOLS_MIRVANE_OCSP_PASSPHRASE_H

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace tools {

// The option --passin.
CLI::Option* addPassphraseOption(CLI::App* command, std::string& source);

// While it lives, the platform gets its passphrases from here. One at a time.
class PassphraseSource {
  public:
    // pass:TEXT, env:VARIABLE or file:PATH, whose first line counts; with the empty text the user is asked at
    // the terminal, once, without an echo. Throws InputError for a source that gives none.
    explicit PassphraseSource(std::string const& source);
    ~PassphraseSource();
    PassphraseSource(PassphraseSource const&) = delete;
    PassphraseSource& operator=(PassphraseSource const&) = delete;

    // Whether the platform wanted one, and whether it got it.
    bool isAsked() const { return isAsked_; }
    bool isGiven() const { return isAsked_ && passphrase_; }

  private:
    static int answer(void* source, const char* container, char* passphrase, int capacity);

    std::optional<std::string> passphrase_;
    bool isAsked_ = false;
};

}  // namespace tools

#endif
