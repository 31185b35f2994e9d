// SPDX-License-Identifier: Apache-2.0
// The three numeric array reads under one name, and a plain model of them.
#ifndef TESTS_SAX_ARRAY_READ_H
#define TESTS_SAX_ARRAY_READ_H

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "vSAXDefaultBuffer.h"

namespace sax {

/// Says where a read has not written: no such value results from the texts that are read here.
template <class T>
T untouched() {
    T value;
    std::memset(&value, 0xA5, sizeof value);
    return value;
}

template <class T>
struct ArrayRead;

template <>
struct ArrayRead<int> {
    static constexpr const char* kFunction = "stoi";
    static constexpr bool kBounded = true;
    static int read(const vSAXDefaultBuffer& buffer, int* values, int count) {
        return buffer.GetIntArray(values, count);
    }
    static int convert(const char* token, char** end) {
        const long value = std::strtol(token, end, 10);
        if (value < INT_MIN || value > INT_MAX) errno = ERANGE;
        return static_cast<int>(value);
    }
};

template <>
struct ArrayRead<float> {
    static constexpr const char* kFunction = "stof";
    static constexpr bool kBounded = false;
    static int read(const vSAXDefaultBuffer& buffer, float* values, int count) {
        return buffer.GetFloatArray(values, count);
    }
    static float convert(const char* token, char** end) { return std::strtof(token, end); }
};

template <>
struct ArrayRead<double> {
    static constexpr const char* kFunction = "stod";
    static constexpr bool kBounded = false;
    static int read(const vSAXDefaultBuffer& buffer, double* values, int count) {
        return buffer.GetDoubleArray(values, count);
    }
    static double convert(const char* token, char** end) { return std::strtod(token, end); }
};

template <class T>
std::string invalid() {
    return std::string("invalid_argument: invalid ") + ArrayRead<T>::kFunction + " argument";
}

template <class T>
std::string out_of_range() {
    return std::string("out_of_range: ") + ArrayRead<T>::kFunction + " argument out of range";
}

/// What a read did: the whole destination afterwards, its result, and the exception with its text, empty
/// when there was none.
template <class T>
struct Outcome {
    std::vector<T> values;
    int result = 0;
    std::string exception;
};

/// The same bit for bit.
template <class T>
bool operator==(const Outcome<T>& a, const Outcome<T>& b) {
    return a.result == b.result && a.exception == b.exception && a.values.size() == b.values.size() &&
           std::memcmp(a.values.data(), b.values.data(), a.values.size() * sizeof(T)) == 0;
}

/// Reads the buffer into `room` elements that are untouched before.
template <class T>
Outcome<T> read(const vSAXDefaultBuffer& buffer, int count, std::size_t room) {
    Outcome<T> outcome{std::vector<T>(room, untouched<T>()), 0, ""};
    try {
        outcome.result = ArrayRead<T>::read(buffer, outcome.values.data(), count);
    } catch (const std::invalid_argument& failure) {
        outcome.exception = std::string("invalid_argument: ") + failure.what();
    } catch (const std::out_of_range& failure) {
        outcome.exception = std::string("out_of_range: ") + failure.what();
    }
    return outcome;
}

template <class T>
Outcome<T> read(const char* text, int count, std::size_t room) {
    vSAXDefaultBuffer buffer;
    buffer.SetBuffer(text);
    return read<T>(buffer, count, room);
}

/// The single value of a text that has one.
template <class T>
T read_one(const char* text) {
    return read<T>(text, 1, 1).values[0];
}

/// What read() must give.
template <class T>
Outcome<T> expected_read(const std::string& text, int count, std::size_t room) {
    Outcome<T> outcome{std::vector<T>(room, untouched<T>()), 0, ""};
    for (int i = 0; i < count; ++i) outcome.values[static_cast<std::size_t>(i)] = 0;
    const char* const separators = " \n";
    std::size_t stored = 0;
    std::size_t start = text.find_first_not_of(separators);
    while (start != std::string::npos) {
        if (ArrayRead<T>::kBounded && stored >= static_cast<unsigned>(count)) break;
        const std::size_t end = text.find_first_of(separators, start);
        const std::string token =
            text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        start = end == std::string::npos ? end : text.find_first_not_of(separators, end);
        char* stop = nullptr;
        errno = 0;
        const T value = ArrayRead<T>::convert(token.c_str(), &stop);
        if (stop == token.c_str()) {
            outcome.exception = invalid<T>();
            return outcome;
        }
        if (errno == ERANGE) {
            outcome.exception = out_of_range<T>();
            return outcome;
        }
        outcome.values.at(stored++) = value;
    }
    outcome.result = 1;
    return outcome;
}

}  // namespace sax

#endif
