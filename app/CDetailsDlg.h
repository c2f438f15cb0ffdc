// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "ImageFacts.h"

#include <QDialog>

/// Shows what is to be known of an image, as texts to copy, with what can be done with its file. Deletes
/// itself when it is closed.
class CDetailsDlg : public QDialog
{
    Q_OBJECT

public:
    /// @param strFile  its path; empty for an image without a file
    CDetailsDlg(const QList<SFact>& lstFacts, const QString& strFile, QWidget* pParent);
};
