// SPDX-License-Identifier: Apache-2.0
// What the component runtime knows of a class while the program runs.
#ifndef OXA_META_CLASS_H
#define OXA_META_CLASS_H

#include <cstddef>
#include <string>

#include "OXAComponentExport.h"
#include "OXATypes.h"

/// Describes one class. fct_RetrieveMetaObject makes one object for each pair of class name and framework
/// name, keeps it until the component library is unloaded, and never changes it: any thread may read it. Its
/// texts live as long as it does.
class PELTO_COMPONENT_API OXAMetaClass {
public:
    OXAMetaClass(const OXAMetaClass&) = delete;
    OXAMetaClass& operator=(const OXAMetaClass&) = delete;

    const char* ClassName() const noexcept;
    int ClassKind() const noexcept;
    OXAMetaClass* Base() const noexcept;  ///< null for a root
    const char* Version() const noexcept;
    const char* Framework() const noexcept;
    std::size_t InstanceSize() const noexcept;  ///< in bytes

    /// Derived from the class name and the framework name alone: the same in every process and build.
    const GUID& ClassId() const noexcept;

    /// 1 if the class or one of its bases, direct or not, has that name, else 0; null names no class.
    int IsAKindOf(const char* className) const noexcept;

private:
    class _Registry;
    friend PELTO_COMPONENT_API OXAMetaClass* fct_RetrieveMetaObject(const char*, int, OXAMetaClass*,
                                                                    const char*, const char*, std::size_t);

    OXAMetaClass(std::string className, int kind, OXAMetaClass* base, std::string version,
                 std::string framework, std::size_t size);

    std::string _className;
    std::string _version;
    std::string _framework;
    OXAMetaClass* _base;
    std::size_t _size;
    int _kind;
    GUID _classId;
};

/// The meta-class of `className` in `framework`. The first call makes it from the other arguments; later
/// calls find it again, and ignore them. Null texts read as empty ones; the texts are copied.
///
/// Never null. Throws std::bad_alloc, and then registers nothing. Any thread may call this.
PELTO_COMPONENT_API OXAMetaClass* fct_RetrieveMetaObject(const char* className, int kind, OXAMetaClass* base,
                                                         const char* version, const char* framework,
                                                         std::size_t size);

/// Declares, in the public part of a component's class, the members that name it.
#define OXA_META_CLASS_MEMBERS         \
    static OXAMetaClass* MetaObject(); \
    static const GUID& ClassId();      \
    static const char* ClassName();    \
    OXAMetaClass* GetMetaObject() const override;

#endif
