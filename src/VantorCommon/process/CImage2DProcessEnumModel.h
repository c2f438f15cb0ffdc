// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/mvc/CBaseModel.h>

/// The state of a tool with one parameter, a type out of an enumeration. It announces no change; only the
/// tool itself writes it. GUI thread only.
template <class Enum> class CImage2DProcessEnumModel : public CBaseModel
{
public:
    /// Chooses a type; any value is stored.
    void SetType(Enum eType) { m_eType = eType; }
    /// The chosen type, the one with the value 0 at the start.
    Enum GetType() const { return m_eType; }

private:
    Enum m_eType = static_cast<Enum>(0);
};
