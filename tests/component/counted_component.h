// SPDX-License-Identifier: Apache-2.0
// Components that count how many of them live and how often they were destroyed.
#ifndef TESTS_COMPONENT_COUNTED_COMPONENT_H
#define TESTS_COMPONENT_COUNTED_COMPONENT_H

#include "OXABaseUnknown.h"
#include "OXAMetaClass.h"
#include "OXAVar.h"

namespace component_tests {

inline int live_components = 0;
inline int destructions = 0;

/// Derives from OXABaseUnknown and names itself.
class Shape : public OXABaseUnknown {
public:
    Shape() { ++live_components; }

    static OXAMetaClass* MetaObject() {
        static OXAMetaClass* const meta = fct_RetrieveMetaObject("Shape", 1, OXABaseUnknown::MetaObject(),
                                                                 "2", "ComponentTests", sizeof(Shape));
        return meta;
    }
    static const GUID& ClassId() { return MetaObject()->ClassId(); }
    static const char* ClassName() { return MetaObject()->ClassName(); }
    OXAMetaClass* GetMetaObject() const override { return MetaObject(); }

protected:
    ~Shape() override {
        --live_components;
        ++destructions;
    }
};

/// One level further down.
class Circle : public Shape {
public:
    static OXAMetaClass* MetaObject() {
        static OXAMetaClass* const meta =
            fct_RetrieveMetaObject("Circle", 1, Shape::MetaObject(), "2", "ComponentTests", sizeof(Circle));
        return meta;
    }
    static const GUID& ClassId() { return MetaObject()->ClassId(); }
    static const char* ClassName() { return MetaObject()->ClassName(); }
    OXAMetaClass* GetMetaObject() const override { return MetaObject(); }

protected:
    ~Circle() override = default;
};

/// Counts from zero for one test.
struct FreshCounts {
    FreshCounts() { live_components = destructions = 0; }
};

/// The references of a component.
inline unsigned int references_of(OXABaseUnknown& object) {
    object.AddRef();
    return object.Release();
}

}  // namespace component_tests

#endif
