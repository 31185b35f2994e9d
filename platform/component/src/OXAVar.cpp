// SPDX-License-Identifier: Apache-2.0

#include "OXAVar.h"

OXANullVarError::OXANullVarError() : std::logic_error("a null component reference was used") {}

OXANullVarError::~OXANullVarError() = default;

void ThrowErrorNullVar() { throw OXANullVarError(); }
