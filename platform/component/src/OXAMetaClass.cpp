// SPDX-License-Identifier: Apache-2.0

#include "OXAMetaClass.h"

#include <cstring>
#include <deque>
#include <mutex>
#include <utility>

#include "OXABaseUnknown.h"

namespace {

const char* or_empty(const char* text) { return text ? text : ""; }

/// The FNV-1a hash of the text and a terminating zero, from `hash` on.
std::uint64_t fnv1a(std::uint64_t hash, const std::string& text) {
    constexpr std::uint64_t prime = 0x100000001b3U;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * prime;
    return hash * prime;
}

/// Two hashes of the names from different starts; the names' order and their end both count.
GUID class_id(const std::string& framework, const std::string& class_name) {
    constexpr std::uint64_t offset_basis = 0xcbf29ce484222325U;
    const std::uint64_t high = fnv1a(fnv1a(offset_basis, framework), class_name);
    const std::uint64_t low = fnv1a(fnv1a(high, framework), class_name);
    GUID id{};
    id.Data1 = static_cast<std::uint32_t>(high >> 32);
    id.Data2 = static_cast<std::uint16_t>(high >> 16);
    id.Data3 = static_cast<std::uint16_t>(high);
    for (int i = 0; i < 8; ++i) id.Data4[i] = static_cast<std::uint8_t>(low >> (56 - 8 * i));
    return id;
}

}  // namespace

/// All meta-classes. A program has some dozens, and looks each up once.
class OXAMetaClass::_Registry {
public:
    static _Registry& instance() {
        static _Registry registry;
        return registry;
    }

    OXAMetaClass* retrieve(const char* class_name, int kind, OXAMetaClass* base, const char* version,
                           const char* framework, std::size_t size) {
        const std::lock_guard lock(mutex_);
        for (Entry& entry : entries_) {
            if (entry.meta._className == class_name && entry.meta._framework == framework) return &entry.meta;
        }
        return &entries_.emplace_back(class_name, kind, base, version, framework, size).meta;
    }

private:
    /// Reaches the private constructor for the container.
    struct Entry {
        template <class... Arguments>
        explicit Entry(Arguments&&... arguments) : meta(std::forward<Arguments>(arguments)...) {}

        OXAMetaClass meta;
    };

    std::mutex mutex_;
    std::deque<Entry> entries_;  // which never moves its elements
};

namespace {

/// Makes the registry when the library is loaded, so that it outlives the static objects of its users.
[[maybe_unused]] OXAMetaClass* const root = OXABaseUnknown::MetaObject();

}  // namespace

OXAMetaClass::OXAMetaClass(std::string className, int kind, OXAMetaClass* base, std::string version,
                           std::string framework, std::size_t size)
    : _className(std::move(className)),
      _version(std::move(version)),
      _framework(std::move(framework)),
      _base(base),
      _size(size),
      _kind(kind),
      _classId(class_id(_framework, _className)) {}

const char* OXAMetaClass::ClassName() const noexcept { return _className.c_str(); }

int OXAMetaClass::ClassKind() const noexcept { return _kind; }

OXAMetaClass* OXAMetaClass::Base() const noexcept { return _base; }

const char* OXAMetaClass::Version() const noexcept { return _version.c_str(); }

const char* OXAMetaClass::Framework() const noexcept { return _framework.c_str(); }

std::size_t OXAMetaClass::InstanceSize() const noexcept { return _size; }

const GUID& OXAMetaClass::ClassId() const noexcept { return _classId; }

int OXAMetaClass::IsAKindOf(const char* className) const noexcept {
    if (!className) return 0;
    for (const OXAMetaClass* meta = this; meta; meta = meta->_base) {
        if (meta->_className == className) return 1;
    }
    return 0;
}

OXAMetaClass* fct_RetrieveMetaObject(const char* className, int kind, OXAMetaClass* base, const char* version,
                                     const char* framework, std::size_t size) {
    return OXAMetaClass::_Registry::instance().retrieve(or_empty(className), kind, base, or_empty(version),
                                                        or_empty(framework), size);
}
