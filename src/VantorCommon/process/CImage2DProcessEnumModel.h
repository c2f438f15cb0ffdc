// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/mvc/CBaseModel.h>

/// The state of a tool with one parameter, a type of an enumeration. It emits no signals; only the tool
/// itself changes it. GUI thread only.
template <class Enum> class CImage2DProcessEnumModel : public CBaseModel
{
public:
    /// Stores the chosen type, any value.
    void SetType(Enum eType) { m_eType = eType; }
    /// The chosen type; the one with the value 0 at first.
    Enum GetType() const { return m_eType; }

private:
    Enum m_eType = static_cast<Enum>(0);
};
