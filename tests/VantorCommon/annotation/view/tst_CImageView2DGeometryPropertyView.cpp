// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/view/CImageView2DGeometryPropertyView.h>

#include <QApplication>

namespace
{
// Opens the protected look at the connections.
class CWatchedModel : public CImageView2DGeometryModel
{
public:
    int PropertyReceivers() const
    {
        return receivers(SIGNAL(signal_ChangeDrawableObjectProperty(unsigned int)));
    }
};
} // namespace

class tst_CImageView2DGeometryPropertyView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsAtLeast200PixelsWide()
    {
        CImageView2DGeometryModel model;
        QWidget parent;
        auto* pView = new CImageView2DGeometryPropertyView(&model, &parent);
        QCOMPARE(pView->minimumWidth(), 200);
        QCOMPARE(pView->parentWidget(), &parent);
    }

    void itListensToTheModelWhileItLives()
    {
        CWatchedModel model;
        QCOMPARE(model.PropertyReceivers(), 0);
        {
            CImageView2DGeometryPropertyView view(&model);
            QCOMPARE(model.PropertyReceivers(), 1);
            const auto pText = std::make_shared<CImageView2DDrawableText>();
            model.AddObject(pText);
            pText->SetPen(QPen(Qt::red));
        }
        QCOMPARE(model.PropertyReceivers(), 0);
    }

    void itDoesWithoutAModel()
    {
        CImageView2DGeometryPropertyView view(nullptr);
        view.slot_ChangeDrawableObjectProperty(1);
        QCOMPARE(view.minimumWidth(), 200);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DGeometryPropertyView)
#include "tst_CImageView2DGeometryPropertyView.moc"
