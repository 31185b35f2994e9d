// SPDX-License-Identifier: Apache-2.0
// The base of every component: reference counting, interface queries, meta-class.
#ifndef OXA_BASE_UNKNOWN_H
#define OXA_BASE_UNKNOWN_H

#include <atomic>

#include "OXAComponentExport.h"
#include "OXATypes.h"

class OXAMetaClass;

/// A reference-counted object. `new` makes it with one reference, which belongs to its maker, and the Release
/// of the last reference deletes it. OXAVar counts for you.
///
/// A class derives only from this one, directly or through other components, so that a component has the
/// same address as each of its classes. It names itself by overriding GetMetaObject. To offer an interface
/// that is not among its bases, it overrides both queries.
///
/// Threads: any thread may call AddRef and Release; the derived class decides about everything else.
class PELTO_COMPONENT_API OXABaseUnknown {
public:
    OXABaseUnknown(const OXABaseUnknown&) = delete;
    OXABaseUnknown& operator=(const OXABaseUnknown&) = delete;

    // The order of the virtual operations is part of the binary interface.

    /// Asks for the class or interface that `classId` names. If the object has it, `*object` points to it,
    /// with a new reference that the caller releases. Otherwise `*object` is null and the result
    /// E_NOINTERFACE. A null `object` gives E_POINTER.
    virtual HRESULT QueryInterface(const GUID& classId, void** object);

    /// Adds a reference and returns the new count.
    virtual unsigned int AddRef();

    /// Releases a reference and returns the new count; at 0 the object is gone.
    virtual unsigned int Release();

    // Components have no type information and take no calls by name. These set their results, if they have a
    // place for one, to 0 or null, and return E_NOTIMPL.
    virtual HRESULT GetTypeInfoCount(unsigned int* count);
    virtual HRESULT GetTypeInfo(unsigned int index, unsigned int locale, void** typeInfo);
    virtual HRESULT GetIDsOfNames(const GUID& classId, const char* const* names, unsigned int count,
                                  unsigned int locale, int* ids);
    virtual HRESULT Invoke(int id, const GUID& classId, unsigned int locale, unsigned int flags,
                           void* parameters, void* result);

    /// The same query by the name of a class or interface: null if the object does not have it or `className`
    /// is null; else with a new reference. Cast the result to that class with static_cast.
    virtual OXABaseUnknown* QueryInterface(const char* className);

protected:
    OXABaseUnknown() noexcept;

    /// Release a component, never delete it.
    virtual ~OXABaseUnknown();

public:
    /// The meta-class of the object's most derived class.
    virtual OXAMetaClass* GetMetaObject() const;

    /// The name of that class; lives as long as the meta-class.
    virtual const char* IsA() const;

    /// 1 if the object's class or one of its bases has that name, else 0.
    virtual int IsAKindOf(const char* className) const;

    /// The component behind this object: the object itself, or, for an interface that a component offers
    /// beside its bases, that component. Adds no reference.
    virtual const OXABaseUnknown* GetImpl() const;

    /// Puts another component behind this object; E_NOTIMPL if it cannot, as here.
    virtual HRESULT SetImpl(OXABaseUnknown* implementation);

    /// 1 if there is no component behind this object, else 0.
    virtual int IsNull() const;

    /// 1 if `other` is this component, through whichever interface; else 0, also for null.
    virtual int IsEqual(const OXABaseUnknown* other) const;

    /// Asks the component to change to a state that it defines; E_NOTIMPL if it defines none, as here.
    virtual HRESULT ChangeComponentState(int state);

    static OXAMetaClass* MetaObject();
    static const GUID& ClassId();
    static const char* ClassName();

private:
    std::atomic<unsigned int> _references;
};

#endif
