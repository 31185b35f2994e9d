// The base of every component: reference counting, interface queries, meta-class.
#ifndef OXA_BASE_UNKNOWN_H
#define OXA_BASE_UNKNOWN_H

#include <atomic>

#include "OXAComponentExport.h"
#include "OXATypes.h"

class OXAMetaClass;

/// A reference-counted object. It is made with `new`, holds one reference then, which is its maker's, and is
/// deleted by the Release that gives the last one back. OXAVar counts for its user.
///
/// A class derives from this one alone, directly or through other components, so that a component has the
/// same address as each of its classes. It names itself by overriding GetMetaObject. An interface that is
/// not among its bases is offered by overriding both queries.
///
/// Threads: AddRef and Release may be called from any thread; all else is the derived class's to say.
class PELTO_COMPONENT_API OXABaseUnknown {
public:
    OXABaseUnknown(const OXABaseUnknown&) = delete;
    OXABaseUnknown& operator=(const OXABaseUnknown&) = delete;

    // The order of the virtual operations is part of the binary interface.

    /// Asks for the class or interface that `classId` names. When the object has it, `*object` points to it
    /// and has a new reference, the caller's to release. Otherwise `*object` is null and the result
    /// E_NOINTERFACE; it is E_POINTER when `object` is null.
    virtual HRESULT QueryInterface(const GUID& classId, void** object);

    /// Adds a reference and returns the new count.
    virtual unsigned int AddRef();

    /// Gives a reference back and returns the new count; at 0 the object is gone.
    virtual unsigned int Release();

    // Components carry no type information and take no calls by name. These set their results to 0 or null,
    // where there is a place for one, and return E_NOTIMPL.
    virtual HRESULT GetTypeInfoCount(unsigned int* count);
    virtual HRESULT GetTypeInfo(unsigned int index, unsigned int locale, void** typeInfo);
    virtual HRESULT GetIDsOfNames(const GUID& classId, const char* const* names, unsigned int count,
                                  unsigned int locale, int* ids);
    virtual HRESULT Invoke(int id, const GUID& classId, unsigned int locale, unsigned int flags,
                           void* parameters, void* result);

    /// The same query by the name of a class or interface: null when the object does not have it or
    /// `className` is null, else with a new reference, to be cast to that class with static_cast.
    virtual OXABaseUnknown* QueryInterface(const char* className);

protected:
    OXABaseUnknown() noexcept;

    /// Users release a component, they never delete it.
    virtual ~OXABaseUnknown();

public:
    /// The meta-class of the object's own class.
    virtual OXAMetaClass* GetMetaObject() const;

    /// The name of the object's own class; lives as long as the meta-class.
    virtual const char* IsA() const;

    /// 1 when the object's class or one of its bases has that name, else 0.
    virtual int IsAKindOf(const char* className) const;

    /// The component behind this object: the object itself, or, for an interface that a component offers
    /// beside its bases, that component. Adds no reference.
    virtual const OXABaseUnknown* GetImpl() const;

    /// Puts another component behind this object; E_NOTIMPL where that cannot be done, as here.
    virtual HRESULT SetImpl(OXABaseUnknown* implementation);

    /// 1 when there is no component behind this object, else 0.
    virtual int IsNull() const;

    /// 1 when `other` is this component, seen through whichever interface, else 0, as for null.
    virtual int IsEqual(const OXABaseUnknown* other) const;

    /// Asks the component to change to a state of its own definition; E_NOTIMPL where it has none, as here.
    virtual HRESULT ChangeComponentState(int state);

    static OXAMetaClass* MetaObject();
    static const GUID& ClassId();
    static const char* ClassName();

private:
    std::atomic<unsigned int> _references;
};

#endif
