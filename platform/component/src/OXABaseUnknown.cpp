// SPDX-License-Identifier: Apache-2.0

#include "OXABaseUnknown.h"

#include "OXAMetaClass.h"

namespace {

bool is_class(const OXAMetaClass* meta, const GUID& class_id) {
    for (; meta; meta = meta->Base()) {
        if (meta->ClassId() == class_id) return true;
    }
    return false;
}

template <class T>
void clear(T* result) {
    if (result) *result = T();
}

}  // namespace

OXABaseUnknown::OXABaseUnknown() noexcept : _references(1) {}

OXABaseUnknown::~OXABaseUnknown() = default;

HRESULT OXABaseUnknown::QueryInterface(const GUID& classId, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!is_class(GetMetaObject(), classId)) return E_NOINTERFACE;
    AddRef();
    *object = this;
    return S_OK;
}

unsigned int OXABaseUnknown::AddRef() { return _references.fetch_add(1, std::memory_order_relaxed) + 1; }

unsigned int OXABaseUnknown::Release() {
    const unsigned int left = _references.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) delete this;
    return left;
}

HRESULT OXABaseUnknown::GetTypeInfoCount(unsigned int* count) {
    clear(count);
    return E_NOTIMPL;
}

HRESULT OXABaseUnknown::GetTypeInfo(unsigned int /*index*/, unsigned int /*locale*/, void** typeInfo) {
    clear(typeInfo);
    return E_NOTIMPL;
}

HRESULT OXABaseUnknown::GetIDsOfNames(const GUID& /*classId*/, const char* const* /*names*/,
                                      unsigned int count, unsigned int /*locale*/, int* ids) {
    for (unsigned int i = 0; ids && i < count; ++i) ids[i] = 0;
    return E_NOTIMPL;
}

HRESULT OXABaseUnknown::Invoke(int /*id*/, const GUID& /*classId*/, unsigned int /*locale*/,
                               unsigned int /*flags*/, void* /*parameters*/, void* /*result*/) {
    return E_NOTIMPL;
}

OXABaseUnknown* OXABaseUnknown::QueryInterface(const char* className) {
    if (!IsAKindOf(className)) return nullptr;
    AddRef();
    return this;
}

OXAMetaClass* OXABaseUnknown::GetMetaObject() const { return MetaObject(); }

const char* OXABaseUnknown::IsA() const { return GetMetaObject()->ClassName(); }

int OXABaseUnknown::IsAKindOf(const char* className) const { return GetMetaObject()->IsAKindOf(className); }

const OXABaseUnknown* OXABaseUnknown::GetImpl() const { return this; }

HRESULT OXABaseUnknown::SetImpl(OXABaseUnknown* /*implementation*/) { return E_NOTIMPL; }

int OXABaseUnknown::IsNull() const { return GetImpl() ? 0 : 1; }

int OXABaseUnknown::IsEqual(const OXABaseUnknown* other) const {
    return other && other->GetImpl() == GetImpl() ? 1 : 0;
}

HRESULT OXABaseUnknown::ChangeComponentState(int /*state*/) { return E_NOTIMPL; }

OXAMetaClass* OXABaseUnknown::MetaObject() {
    static OXAMetaClass* const meta =
        fct_RetrieveMetaObject("OXABaseUnknown", 1, nullptr, "0", "OXA", sizeof(OXABaseUnknown));
    return meta;
}

const GUID& OXABaseUnknown::ClassId() { return MetaObject()->ClassId(); }

const char* OXABaseUnknown::ClassName() { return MetaObject()->ClassName(); }
