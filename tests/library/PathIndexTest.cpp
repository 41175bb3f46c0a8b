#include "library/PathIndex.h"

#include <QRandomGenerator>
#include <QStringList>
#include <QTest>

class PathIndexTest : public QObject {
    Q_OBJECT

private slots:
    void answersAsASearchThroughEveryPath()
    {
        const QStringList pieces = u"/ a b é 😀 .mp3 .m4a . 3 m .MP3 x.mp3/"_qs.split(u' ');
        QRandomGenerator random(20011);
        const auto text = [&](int longest) {
            QString made;
            for (int left = random.bounded(1, longest); left > 0; --left)
                made += pieces[random.bounded(static_cast<int>(pieces.size()))];
            return made;
        };
        PathIndex index;
        QStringList paths;
        int found = 0;
        for (int round = 0; round < 20000; ++round) {
            if (paths.size() < 3 || (paths.size() < 12 && random.bounded(2) == 0)) {
                paths.append(u'/' + text(7) + u".mp3"_qs);
                index.insert(paths.last());
            } else if (random.bounded(8) == 0) {
                index.remove(paths.takeAt(random.bounded(static_cast<int>(paths.size()))));
            }
            const QString wanted = text(4) + (random.bounded(2) == 0 ? u".mp3"_qs : QString());
            const bool expected = !paths.filter(wanted).isEmpty();
            found += expected;
            QVERIFY2(index.anyContains(wanted) == expected, qPrintable(wanted + u" in "_qs + paths.join(u' ')));
        }
        QVERIFY(found > 1000 && found < 19000);
        for (const auto& path : std::as_const(paths))
            index.remove(path);
        QVERIFY(!index.anyContains(u"a"_qs) && !index.anyContains(u".mp3"_qs));
    }
};

QTEST_GUILESS_MAIN(PathIndexTest)
#include "PathIndexTest.moc"
