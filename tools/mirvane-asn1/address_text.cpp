#include "address_text.h"

#include <arpa/inet.h>

namespace tools {

std::optional<std::string> addressText(OctetSpan octets) {
    const std::size_t size = octets.size();
    if (size == 8 || size == 32) {
        const auto address = addressText(octets.first(size / 2));
        const auto mask = addressText(octets.last(size / 2));
        return *address + '/' + *mask;
    }
    if (size != 4 && size != 16) return std::nullopt;
    char text[INET6_ADDRSTRLEN] = "";
    if (!inet_ntop(size == 4 ? AF_INET : AF_INET6, octets.data(), text, sizeof text)) return std::nullopt;
    return text;
}

}  // namespace tools
