// A new folder's name from its apps' desktop-menu categories.
#include "layout/FolderNames.h"

#include <QTest>

class FolderNamesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void names_data()
    {
        QTest::addColumn<QList<QStringList>>("apps");
        QTest::addColumn<QString>("name");
        QTest::newRow("two games") << QList<QStringList>{{"Game", "ArcadeGame"}, {"Game", "Utility"}} << "Games";
        QTest::newRow("the specific shared one wins") << QList<QStringList>{{"Utility", "Office"}, {"Office", "Utility"}}
                                                      << "Office";
        QTest::newRow("audio and video are one group") << QList<QStringList>{{"Audio", "Player"}, {"AudioVideo", "Video"}}
                                                       << "Sound & Video";
        QTest::newRow("nothing shared") << QList<QStringList>{{"Game"}, {"Office"}} << "Folder";
        QTest::newRow("an app without categories") << QList<QStringList>{{"Game"}, {}} << "Folder";
        QTest::newRow("no apps") << QList<QStringList>{} << "Folder";
    }
    void names()
    {
        QFETCH(QList<QStringList>, apps);
        QFETCH(QString, name);
        QCOMPARE(FolderNames::fromCategories(apps), name);
    }
};

QTEST_GUILESS_MAIN(FolderNamesTest)
#include "tst_folder_names.moc"
