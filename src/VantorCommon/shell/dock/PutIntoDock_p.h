// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QScrollArea>

/// Shows a panel in a dock. The one that was there stays alive and has no parent then. With a null dock or
/// panel nothing happens. GUI thread only.
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
