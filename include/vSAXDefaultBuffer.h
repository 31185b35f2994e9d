// SPDX-License-Identifier: Apache-2.0
// The text of an XML element, and the typed values that it spells.
//
// A handler appends an element's character data as it comes, and reads the value when the element ends. Texts
// are UTF-8 (OXAUnicodeString). Numbers use the C locale's decimal point.
//
// Errors: a single value that cannot be read gives 0 and a call of LogError, which derived classes override.
// The array reads throw std::invalid_argument and std::out_of_range. The only other exceptions are those of
// failed allocations.
//
// Hostile text: safe, except that GetFloatArray and GetDoubleArray store as many values as the text holds.
//
// Threads: distinct buffers are independent; several threads may read one buffer while none changes it or the
// locale.
#ifndef V_SAX_DEFAULT_BUFFER_H
#define V_SAX_DEFAULT_BUFFER_H

#include <string>

#include "OXAUnicodeString.h"
#include "PeltoExport.h"
#include "vArray.h"
#include "vString.h"

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // members of classes that are exported by themselves
#endif

class PELTO_API vSAXDefaultBuffer {
public:
    /// An empty text. The line is uninitialised until SetLine, or a handler with a locator, sets it.
    vSAXDefaultBuffer();
    virtual ~vSAXDefaultBuffer();
    vSAXDefaultBuffer& operator=(const vSAXDefaultBuffer&) = delete;

    void AppendToBuffer(const OXAUnicodeString& text);
    void ClearBuffer();  ///< keeps the memory for the next text
    void SetBuffer(const OXAUnicodeString& text);
    void SetLine(int line);  ///< of the document, for LogError

    // Single values: nonzero if the text is one. Otherwise 0, after a call of LogError, and `value` is
    // unchanged unless noted. Numbers may have whitespace before them and anything after.

    /// Exactly "true" or "false": no capitals, no whitespace. Reported as "boolean".
    int GetBoolean(bool& value) const;
    int GetInt32(int& value) const;            ///< reported as "int32"
    int GetUint32(unsigned int& value) const;  ///< reported as "int32" too
    /// The low 8 bits of an unsigned number: 300 gives 44. Reported as "uint8"; `value` then has no meaning.
    int GetUint8(unsigned char& value) const;
    int GetFloat(float& value) const;  ///< read as a double and rounded; reported as "float"

    // The text without whitespace (isspace) at its ends. Always 1.

    int GetString(std::string& value) const;
    int GetVString(TOZ::vString& value) const;

    // Arrays of numbers, separated by spaces and line feeds; other whitespace belongs to a number's token,
    // and what follows a number in its token is ignored. The first `count` elements (none if it is negative)
    // are set to zero first. Always 1, or an exception: std::invalid_argument ("invalid stoi argument", "...
    // stof ...", "... stod ...") for a token that is no number, std::out_of_range ("stoi argument out of
    // range", ...) for one that its type cannot hold, denormal floats included. The values before it are
    // stored.

    /// At most `count` values, with `count` taken as unsigned; ignores the rest of the text.
    int GetIntArray(int* values, int count) const;
    /// All values of the text, even beyond `count`: `values` must have room for as many as there are tokens.
    int GetFloatArray(float* values, int count) const;
    /// As GetFloatArray.
    int GetDoubleArray(double* values, int count) const;

    /// Appends each token between whitespace (isspace) to `values`. Always 1.
    int GetVStringArray(vArray<TOZ::vString>& values) const;

protected:
    /// For derived classes; does nothing, and nothing here calls it.
    virtual void Log(const char* message) const;
    /// Called when a single value cannot be read, with the whole text and the name of the type. Does nothing.
    virtual void LogError(const char* value, const char* typeName) const;

private:
    friend class vSAXDefaultHandler;

    /// The same text, at line 0.
    vSAXDefaultBuffer(const vSAXDefaultBuffer& other);

protected:
    int line;
    OXAUnicodeString buffer;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

#endif
