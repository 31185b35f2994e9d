// SPDX-License-Identifier: Apache-2.0
// The locator of a reader.
#ifndef PARSE_LOCATOR_H
#define PARSE_LOCATOR_H

#include <xercesc/sax/Locator.hpp>

#include "OXAISAXLocator.h"
#include "limits/Refusal.h"

namespace sax {

/// Asks the parser while a parse runs, and remembers a position else: the parser's own locator must not be
/// touched then.
class ParseLocator final : public OXAISAXLocator {
public:
    HRESULT GetLineNumber(int& line) override;
    HRESULT GetColumnNumber(int& column) override;
    HRESULT GetPublicId(OXAUnicodeString& publicId) override;
    HRESULT GetSystemId(OXAUnicodeString& systemId) override;

    /// The parser's locator, good until one of the operations below is called.
    void follow(const xercesc::Locator& locator);

    /// Where the parse is, or the position that is remembered.
    Position position() const;

    /// Makes a call of a handler's. When it throws, remembers where the parse is: it ends there.
    template <class Call>
    void around(Call call) {
        try {
            call();
        } catch (...) {
            remember();
            throw;
        }
    }

    /// Remembers where the parse is, and follows it no longer.
    void remember();

    /// Remembers `position`, and follows no parse.
    void set(Position position);

    /// Follows no parse, and keeps what is remembered.
    void leave();

private:
    const xercesc::Locator* locator_ = nullptr;
    Position last_;
};

/// A parser's line or column, in the range of int.
int to_int(std::uint64_t number);

}  // namespace sax

#endif
