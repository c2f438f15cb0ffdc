// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessToolDelegate.h>
#include <VantorCommon/process/EnumKey.h>

/// Edits the first row of a parameter tree with a combo box of the keys of an enumeration, in the order of
/// their declaration; the cell gets the key as text. No other cell has an editor. The values run from 0
/// without a gap. It has no state of its own. GUI thread only.
template <class Enum> class CImage2DProcessEnumDelegate : public CImage2DProcessToolDelegate
{
public:
    /// As Qt's: the parent, if any, owns the delegate.
    explicit CImage2DProcessEnumDelegate(QObject* pParent = nullptr)
        : CImage2DProcessToolDelegate(
              {SProcessParameter::Choice(QStringLiteral("Type"), EnumKey::AllOf<Enum>())}, pParent)
    {
    }
};
