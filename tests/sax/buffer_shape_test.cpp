// SPDX-License-Identifier: Apache-2.0
// What programs built against the class rely on: its fields, its virtual table and its signatures.
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <type_traits>

#include "sax/buffer_private.h"
#include "sax/recording_buffer.h"
#include "support/allocation.h"
#include "support/vtable_slot.h"
#include "vSAXDefaultBuffer.h"

namespace {

using Buffer = vSAXDefaultBuffer;

TEST(SaxBufferShape, FieldsAreTheLineAndThenTheText) {
    Buffer buffer;
    const char* const start = reinterpret_cast<const char*>(&buffer);
    const char* const line = reinterpret_cast<const char*>(&(buffer.*buffer_private::line()));
    const char* const text = reinterpret_cast<const char*>(&(buffer.*buffer_private::buffer()));
    EXPECT_EQ(line - start, static_cast<std::ptrdiff_t>(sizeof(void*)));
    EXPECT_EQ(text - start, static_cast<std::ptrdiff_t>(2 * sizeof(void*)));
    EXPECT_EQ(sizeof(Buffer), 2 * sizeof(void*) + sizeof(OXAUnicodeString));
}

TEST(SaxBufferShape, VirtualTableIsDestructorLogLogError) {
    // The destructor has the first two entries.
    EXPECT_EQ(support::vtable_slot(buffer_private::log()), 2U);
    EXPECT_EQ(support::vtable_slot(buffer_private::log_error()), 3U);
}

TEST(SaxBufferShape, IsDestroyedThroughItsBase) {
    static_assert(std::has_virtual_destructor_v<Buffer>);
    struct Derived : Buffer {
        explicit Derived(bool& flag) : destroyed(flag) {}
        ~Derived() override { destroyed = true; }
        bool& destroyed;
    };
    bool destroyed = false;
    std::unique_ptr<Buffer> buffer = std::make_unique<Derived>(destroyed);
    buffer.reset();
    EXPECT_TRUE(destroyed);
}

TEST(SaxBufferShape, DestructionReleasesTheText) {
    const OXAUnicodeString text(std::string(1000, 'x').c_str());
    const std::ptrdiff_t before = support::live_blocks();
    {
        Buffer buffer;
        buffer.SetBuffer(text);
        EXPECT_GT(support::live_blocks(), before);
    }
    EXPECT_EQ(support::live_blocks(), before);
}

TEST(SaxBufferShape, CannotBeCopiedByUsers) {
    static_assert(!std::is_copy_constructible_v<Buffer>);
    static_assert(!std::is_move_constructible_v<Buffer>);
    static_assert(!std::is_convertible_v<const Buffer&, Buffer>);
}

TEST(SaxBufferShape, OperationsHaveTheirSignatures) {
    static_assert(std::is_default_constructible_v<Buffer>);
    static_assert(
        std::is_same_v<decltype(&Buffer::AppendToBuffer), void (Buffer::*)(const OXAUnicodeString&)>);
    static_assert(std::is_same_v<decltype(&Buffer::ClearBuffer), void (Buffer::*)()>);
    static_assert(std::is_same_v<decltype(&Buffer::SetBuffer), void (Buffer::*)(const OXAUnicodeString&)>);
    static_assert(std::is_same_v<decltype(&Buffer::SetLine), void (Buffer::*)(int)>);
    static_assert(std::is_same_v<decltype(&Buffer::GetBoolean), int (Buffer::*)(bool&) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetInt32), int (Buffer::*)(int&) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetUint32), int (Buffer::*)(unsigned int&) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetUint8), int (Buffer::*)(unsigned char&) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetFloat), int (Buffer::*)(float&) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetString), int (Buffer::*)(std::string&) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetVString), int (Buffer::*)(TOZ::vString&) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetIntArray), int (Buffer::*)(int*, int) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetFloatArray), int (Buffer::*)(float*, int) const>);
    static_assert(std::is_same_v<decltype(&Buffer::GetDoubleArray), int (Buffer::*)(double*, int) const>);
    static_assert(
        std::is_same_v<decltype(&Buffer::GetVStringArray), int (Buffer::*)(vArray<TOZ::vString>&) const>);
}

// Asks for the hooks as any class outside the buffer's own would.
template <class T, class = void>
struct LogIsPublic : std::false_type {};
template <class T>
struct LogIsPublic<T, std::void_t<decltype(std::declval<const T&>().Log(""))>> : std::true_type {};
template <class T, class = void>
struct LogErrorIsPublic : std::false_type {};
template <class T>
struct LogErrorIsPublic<T, std::void_t<decltype(std::declval<const T&>().LogError("", ""))>>
    : std::true_type {};

TEST(SaxBufferShape, HooksAreForDerivedClassesAlone) {
    static_assert(!LogIsPublic<Buffer>::value);
    static_assert(!LogErrorIsPublic<Buffer>::value);
    struct Opened : Buffer {
        using Buffer::Log;
        using Buffer::LogError;
    };
    static_assert(LogIsPublic<Opened>::value);
    static_assert(LogErrorIsPublic<Opened>::value);
}

TEST(SaxBufferShape, HooksDoNothing) {
    struct Opened : Buffer {
        using Buffer::Log;
        using Buffer::LogError;
    };
    Opened opened;
    opened.SetBuffer("text");
    opened.SetLine(7);
    const support::AllocationRecorder recorder;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    opened.Log("message");
    opened.Log(nullptr);
    opened.LogError("value", "type");
    opened.LogError(nullptr, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(opened.*buffer_private::line(), 7);
    EXPECT_EQ(opened.*buffer_private::buffer(), OXAUnicodeString("text"));
}

TEST(SaxBufferShape, StartsWithAnEmptyTextAndNoMemory) {
    const support::AllocationRecorder recorder;
    Buffer buffer;
    EXPECT_EQ(recorder.allocations(), 0U);
    EXPECT_TRUE((buffer.*buffer_private::buffer()).IsEmpty());
}

class CopiedBuffer {
public:
    explicit CopiedBuffer(const Buffer& original) { buffer_private::copy_construct(memory_, original); }
    ~CopiedBuffer() { get().~Buffer(); }
    CopiedBuffer(const CopiedBuffer&) = delete;
    CopiedBuffer& operator=(const CopiedBuffer&) = delete;

    Buffer& get() { return *std::launder(reinterpret_cast<Buffer*>(memory_)); }

private:
    alignas(Buffer) unsigned char memory_[sizeof(Buffer)];
};

TEST(SaxBufferShape, ACopyHasTheTextAndLineZero) {
    Buffer original;
    original.SetBuffer("some text");
    original.SetLine(42);
    CopiedBuffer copy(original);
    EXPECT_EQ(copy.get().*buffer_private::line(), 0);
    EXPECT_EQ(copy.get().*buffer_private::buffer(), OXAUnicodeString("some text"));
    EXPECT_EQ(original.*buffer_private::line(), 42);
    EXPECT_EQ(original.*buffer_private::buffer(), OXAUnicodeString("some text"));
}

TEST(SaxBufferShape, ACopyIsIndependent) {
    Buffer original;
    original.SetBuffer("1 2 3");
    CopiedBuffer copy(original);
    original.SetBuffer("other");
    int values[3] = {};
    EXPECT_EQ(copy.get().GetIntArray(values, 3), 1);
    EXPECT_EQ(values[2], 3);
    copy.get().ClearBuffer();
    EXPECT_EQ(original.*buffer_private::buffer(), OXAUnicodeString("other"));
}

TEST(SaxBufferShape, ACopyCallsItsOwnHooks) {
    // What is copied from is a derived buffer; the copy is none.
    const sax::RecordingBuffer original("abc");
    CopiedBuffer copy(original);
    int value = 5;
    EXPECT_EQ(copy.get().GetInt32(value), 0);
    EXPECT_TRUE(original.errors.empty());
}

}  // namespace
