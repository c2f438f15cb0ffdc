// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/store/AnnotationRecovery.h>

#include <QFrame>
#include <vector>

class QLabel;

/// A bar inside the window that offers annotations which an earlier run has left behind unsaved. It blocks
/// nothing; what is put off is offered again by the next run.
class CRecoveryBar : public QFrame
{
    Q_OBJECT

public:
    using FoundList = std::vector<AnnotationRecovery::SFound>;

    explicit CRecoveryBar(QWidget* pParent);

    /// Shows what there is; hides itself when that is nothing.
    void Offer(const FoundList& vctFound);

Q_SIGNALS:
    /// Restore was chosen.
    void signal_Restore(const FoundList& vctFound);

private:
    void Discard();

    QLabel* m_pText = nullptr;
    FoundList m_vctFound;
};
