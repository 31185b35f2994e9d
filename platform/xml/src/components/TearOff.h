// SPDX-License-Identifier: Apache-2.0
// An interface that a component offers beside its bases.
#ifndef TEAR_OFF_H
#define TEAR_OFF_H

#include "OXABaseUnknown.h"

namespace sax {

/// Part of the component `owner`, and destroyed with it: references and queries are the owner's, as are name
/// and identity. A derived class implements the operations of Interface.
template <class Interface>
class TearOff : public Interface {
public:
    HRESULT QueryInterface(const GUID& classId, void** object) override {
        return owner_.QueryInterface(classId, object);
    }
    OXABaseUnknown* QueryInterface(const char* className) override {
        return owner_.QueryInterface(className);
    }
    unsigned int AddRef() override { return owner_.AddRef(); }
    unsigned int Release() override { return owner_.Release(); }
    OXAMetaClass* GetMetaObject() const override { return owner_.GetMetaObject(); }
    const OXABaseUnknown* GetImpl() const override { return owner_.GetImpl(); }

protected:
    explicit TearOff(OXABaseUnknown& owner) : owner_(owner) {}
    ~TearOff() override = default;

private:
    OXABaseUnknown& owner_;
};

}  // namespace sax

#endif
