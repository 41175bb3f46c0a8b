#include "support/Rows.h"
#include "tagengine/CrashExample.h"

#include <cstdio>

namespace {

constexpr CrashScope sample{12, 20, 4};
constexpr CrashScope everything{4096, 1, 24};
bool isAll = false;

/// File, where it lies, when, and the numbers of the operations that are tried on it.
const std::initializer_list<const char*> rows{
#ifdef __SANITIZE_ADDRESS__
    "roomy v24.mp3 | plain | first | 0", "faststart.m4a | linked | later | 0"
#else
    "roomy v24.mp3 | plain | first | 01234578",
    "roomy v24.mp3 | plain | later | 06",
    "roomy v24.mp3 | plain | again | 0",
    "v23.mp3 | plain | first | 02",
    "v1.mp3 | plain | later | 06",
    "faststart.m4a | plain | first | 0126",
    "padded.m4a | plain | later | 0467",
    "padded.m4a | plain | again | 0",
    "tagged.m4a | plain | first | 1",
    "roomy v24.mp3 | linked | first | 0128",
    "v1.mp3 | linked | later | 16",
    "faststart.m4a | linked | first | 02",
    "padded.m4a | linked | again | 1",
    "long v23.mp3 | linked | first | 0",
    "v23.mp3 | closed folder | first | 02",
    "faststart.m4a | closed folder | later | 02",
    "v23.mp3 | closed folder | again | 1",
    "roomy v24.mp3 | plain | crashed | 07",
    "v23.mp3 | plain | crashed | 0",
    "padded.m4a | linked | crashed | 12"
#endif
};

} // namespace

class CrashStatesTest : public QObject {
    Q_OBJECT

public:
    /// Prints for every sync what comes of a power cut without it.
    static void tryWithoutSyncs()
    {
        QMap<QString, Need> needs;
        for (const char* row : rows) {
            forEachExample(QString::fromUtf8(row), [&](CrashExample& example) {
                const auto note = [&](const QString& what, const QString& place, CrashTally tally) {
                    ++needs[place].seen;
                    needs[place].needed += !tally.wrong.isEmpty();
                    std::printf("%s, without %s: %s: %s\n", qPrintable(example.name()), qPrintable(what),
                                qPrintable(place), qPrintable(tally.counts()));
                };
                example.tryCuts();
                const auto syncs = example.syncs();
                for (auto sync = syncs.begin(); sync != syncs.end(); ++sync)
                    note(u"sync %1"_qs.arg(std::distance(syncs.begin(), sync) + 1), *sync,
                         example.tryCuts([&](qsizetype i) { return i == sync.key(); }));
                const auto places = example.placesSyncedByRecovery();
                for (const auto& place : places)
                    note(u"syncs of recovery"_qs, place + u", in recovery"_qs, example.tryCuts({}, place));
                std::fflush(stdout);
            });
        }
        for (auto need = needs.begin(); need != needs.end(); ++need)
            std::printf("%s: %s, needed %d times out of %d\n", need->needed ? "needed" : "NEEDLESS",
                        qPrintable(need.key()), need->needed, need->seen);
    }

private slots:
    void leaveOldOrNewFile_data() { addRows(rows); }

    void leaveOldOrNewFile()
    {
        CrashTally tally;
        forEachExample(QString::fromUtf8(QTest::currentDataTag()), [&](CrashExample& example) {
            tally += example.tryCuts();
            looked_ += example.looked();
        });
        all_ += tally;
        QVERIFY2(tally.wrong.isEmpty(), qPrintable(tally.report()));
    }

    // The harness proves itself.
    void needSyncs_data() { addRows({"roomy v24.mp3 | linked | first | 1", "v23.mp3 | plain | first | 0"}); }

    void needSyncs()
    {
        forEachExample(QString::fromUtf8(QTest::currentDataTag()), [](CrashExample& example) {
            const auto syncs = example.syncs();
            const CrashTally tally = example.tryCuts([&](qsizetype i) { return syncs.contains(i); });
            QVERIFY(tally.wrong.contains(u"damaged"_qs));
        });
    }

    void cleanupTestCase() { qInfo("%s; %d disks were looked at", qPrintable(all_.counts()), int(looked_)); }

private:
    static void forEachExample(const QString& row, const std::function<void(CrashExample&)>& use)
    {
        const QStringList cells = row.split(u" | "_qs);
        for (const QChar number : isAll && !cells[0].startsWith(u"long") ? u"012345678"_qs : cells[3]) {
            // Only MPEG files have chapters.
            if (number == u'8' && !cells[0].endsWith(u".mp3"))
                continue;
            CrashExample example(cells[0], cells[1], cells[2], WritingOperations::all[number.digitValue()],
                                 isAll ? everything : sample);
            use(example);
        }
    }

    struct Need {
        int seen = 0;
        int needed = 0;
    };

    CrashTally all_;
    qsizetype looked_ = 0;
};

/// --all tries all that a cut may leave, --without-sync (besides) leaves out every sync in turn; what follows is for
/// Qt Test.
int main(int count, char** arguments)
{
    ScratchFolder::workInMemory();
    QStringList rest;
    bool isWithoutSync = false;
    for (int i = 0; i < count; ++i) {
        const QString argument = QFile::decodeName(arguments[i]);
        if (argument == u"--all")
            isAll = qputenv("QTEST_FUNCTION_TIMEOUT", "100000000");
        else if (argument == u"--without-sync")
            isWithoutSync = true;
        else
            rest += argument;
    }
    if (isWithoutSync)
        return CrashStatesTest::tryWithoutSyncs(), 0;
    CrashStatesTest test;
    return QTest::qExec(&test, rest);
}

#include "CrashStatesTest.moc"
