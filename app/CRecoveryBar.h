// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/store/AnnotationRecovery.h>

#include <QFrame>
#include <vector>

class QLabel;

/// A bar inside the window that offers unsaved annotations of an earlier run. It blocks nothing; if the user
/// postpones, the next run offers them again.
class CRecoveryBar : public QFrame
{
    Q_OBJECT

public:
    using FoundList = std::vector<AnnotationRecovery::SFound>;

    explicit CRecoveryBar(QWidget* pParent);

    /// Shows the offer; hides the bar if there is nothing to offer.
    void Offer(const FoundList& vctFound);
    /// Offers this, too.
    void OfferToo(const AnnotationRecovery::SFound& found);

Q_SIGNALS:
    /// The user chose to restore.
    void signal_Restore(const FoundList& vctFound);

private:
    void Discard();

    QLabel* m_pText = nullptr;
    FoundList m_vctFound;
};
