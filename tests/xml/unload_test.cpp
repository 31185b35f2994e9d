// SPDX-License-Identifier: Apache-2.0
// The framework is loaded and unloaded with a library that uses it, again and again.
#include <cstdio>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using Parse = int (*)();

/// Opens the library, parses a document with it, and closes it.
void use_library_once() {
    void* library = dlopen(PELTO_XML_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto parse = reinterpret_cast<Parse>(dlsym(library, "parse_a_document"));
    ASSERT_NE(parse, nullptr) << dlerror();
    EXPECT_EQ(parse(), 3);
    EXPECT_EQ(dlclose(library), 0);
}

/// Pages of memory that the process has.
long resident_pages() {
    long size = 0;
    long resident = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) resident = 0;
        std::fclose(file);
    }
    return resident;
}

bool is_loaded(const char* library) { return dlopen(library, RTLD_NOW | RTLD_NOLOAD) != nullptr; }

TEST(XmlUnload, AHundredTimesOverWithoutGrowth) {
    for (int i = 0; i < 20; ++i) use_library_once();
    EXPECT_FALSE(is_loaded(PELTO_XML_PLUGIN));
    const long before = resident_pages();
    for (int i = 0; i < 100; ++i) use_library_once();
    const long grown = resident_pages() - before;
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(grown * sysconf(_SC_PAGESIZE), 1 << 20);
#else
    EXPECT_GE(before, 0) << grown;  // a sanitizer keeps what was freed
#endif
}

}  // namespace
