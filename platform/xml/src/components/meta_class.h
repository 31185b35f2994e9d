// SPDX-License-Identifier: Apache-2.0
// Defines the members that name a component's class.
#ifndef META_CLASS_H
#define META_CLASS_H

#include "OXAMetaClass.h"

#define OXA_DEFINE_META_CLASS(Class, BaseClass)                                                    \
    OXAMetaClass* Class::MetaObject() {                                                            \
        static OXAMetaClass* const meta =                                                          \
            fct_RetrieveMetaObject(#Class, 1, BaseClass::MetaObject(), "0", "OXA", sizeof(Class)); \
        return meta;                                                                               \
    }                                                                                              \
    const GUID& Class::ClassId() { return MetaObject()->ClassId(); }                               \
    const char* Class::ClassName() { return MetaObject()->ClassName(); }                           \
    OXAMetaClass* Class::GetMetaObject() const { return MetaObject(); }

#endif
