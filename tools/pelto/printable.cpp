#include "printable.h"

std::string printable(std::string_view text) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            shown += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0xF]};
        } else {
            shown += c;
        }
    }
    return shown;
}
