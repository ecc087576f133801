// The icon sizes each screen allows: a label never reaches the next row's
// icons, neighbours keep a gap, and larger screens get larger icons.
#include "storage/AppearanceRepository.h"
#include "ui/GridFit.h"

#include <QTest>

class GridFitTest : public QObject {
    Q_OBJECT

    // The icon shown with nothing stored: 120 clamped into the screen's range.
    static qreal defaultIcon(const DisplayProfile &display)
    {
        return std::clamp(AppearanceRepositoryImpl::kDefaultIconSize, display.minIconSize, display.maxIconSize);
    }

private Q_SLOTS:
    void theLargestAllowedIconLeavesRoomForItsLabel_data()
    {
        QTest::addColumn<QSizeF>("screen");
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("rows");
        QTest::newRow("1280x720") << QSizeF(1280, 720) << 8 << 5;
        QTest::newRow("1920x1080") << QSizeF(1920, 1080) << 8 << 5;
        QTest::newRow("3840x2160") << QSizeF(3840, 2160) << 8 << 5;
        QTest::newRow("1366x768, 7 rows") << QSizeF(1366, 768) << 8 << 7;
        QTest::newRow("portrait 1080x1920, 12 columns") << QSizeF(1080, 1920) << 12 << 5;
    }
    void theLargestAllowedIconLeavesRoomForItsLabel()
    {
        QFETCH(QSizeF, screen);
        QFETCH(int, columns);
        QFETCH(int, rows);
        const DisplayProfile display = GridFit::profile(QStringLiteral("s"), screen, columns, rows);
        QVERIFY(display.minIconSize <= display.maxIconSize);
        const qreal icon = display.maxIconSize;
        const qreal cellHeight = GridFit::gridHeight(screen) / rows;
        const qreal cellWidth = GridFit::gridWidth(screen) / columns;
        // Icon, gap, one label line in a font 14% of the icon (11 px at least), some air.
        const qreal label = 1.35 * std::max<qreal>(11, icon * 0.14);
        QVERIFY2(icon + 8 + label + 12 <= cellHeight + 0.5,
                 qPrintable(QStringLiteral("icon %1 in a cell %2 high").arg(icon).arg(cellHeight)));
        QVERIFY2(icon * 1.2 <= cellWidth + 0.5, qPrintable(QStringLiteral("icon %1 in a cell %2 wide").arg(icon).arg(cellWidth)));
    }

    void largerScreensShowLargerIcons()
    {
        const qreal small = defaultIcon(GridFit::profile(QStringLiteral("a"), QSizeF(1280, 720), 8, 5));
        const qreal full = defaultIcon(GridFit::profile(QStringLiteral("b"), QSizeF(1920, 1080), 8, 5));
        const qreal huge = defaultIcon(GridFit::profile(QStringLiteral("c"), QSizeF(3840, 2160), 8, 5));
        QVERIFY2(small < full && full < huge, qPrintable(QStringLiteral("%1 %2 %3").arg(small).arg(full).arg(huge)));
        QCOMPARE(full, AppearanceRepositoryImpl::kDefaultIconSize); // a common screen keeps the usual size
    }
};

QTEST_GUILESS_MAIN(GridFitTest)
#include "test_grid_fit.moc"
