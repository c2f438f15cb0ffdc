// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>

#include <memory>

class CImageView2DCtrl;
class CImageView2DDrawableObject;

/// Adds an object to the geometry model; undo removes it. The command keeps the object itself alive, so that
/// identifier and name survive. It does nothing without a controller or an object. The controller is not
/// owned and outlives the command. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DCommandAddGeometry : public CCommand
{
public:
    /// Changes nothing yet; null is allowed for both.
    CImageView2DCommandAddGeometry(CImageView2DCtrl* pCtrl,
                                   std::shared_ptr<CImageView2DDrawableObject> pObject);
    ~CImageView2DCommandAddGeometry() override;

    void exec() override;
    void undo() override;

private:
    CImageView2DCtrl* m_pCtrl;
    std::shared_ptr<CImageView2DDrawableObject> m_pObject;
};
