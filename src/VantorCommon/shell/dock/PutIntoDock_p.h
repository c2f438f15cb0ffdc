// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QScrollArea>

/// Shows a panel in a dock. The former panel stays alive, without a parent. Does nothing for a null dock or
/// panel. GUI thread only.
inline void PutIntoDock(QScrollArea* pDock, QWidget* pPanel)
{
    if (!pDock || !pPanel)
        return;
    if (pDock->widget() != pPanel) {
        pDock->takeWidget(); // setWidget would delete the panel of another view
        pDock->setWidget(pPanel);
    }
    pPanel->show();
}
