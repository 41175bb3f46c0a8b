#include "support/ScratchFolder.h"

#include <QDirIterator>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <QTest>

/// The walls between the folders of src/, as far as the linker does not keep them.
class StructureTest : public QObject {
    Q_OBJECT

private slots:
    void onlyViewsKnowWidgetsAndOnlyTheEngineKnowsTagLib()
    {
        const QDir widgets(QLibraryInfo::path(QLibraryInfo::HeadersPath) + u"/QtWidgets"_qs);
        const QDir source(QStringLiteral(SOURCE_DIR "/src"));
        const QRegularExpression include(u"^\\s*#\\s*include\\s*[<\"](?:QtWidgets/)?([^>\"]+)"_qs,
                                         QRegularExpression::MultilineOption);
        int views = 0;
        int engine = 0;
        QDirIterator files(source.path(), {u"*.h"_qs, u"*.cpp"_qs}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = source.relativeFilePath(files.next());
            const QString text = QString::fromUtf8(ScratchFolder::contents(source.filePath(file)));
            for (auto match = include.globalMatch(text); match.hasNext();) {
                const QString header = match.next().captured(1);
                const bool isView = widgets.exists(header) || header.contains(u"/ui/");
                const bool isEngine = header.startsWith(u"taglib/");
                views += isView;
                engine += isEngine;
                QVERIFY2((!isView || file.contains(u"/ui/") || file == u"app/main.cpp")
                             && (!isEngine || file.startsWith(u"tagengine/")),
                         qPrintable(file + u" includes "_qs + header));
            }
        }
        QVERIFY(widgets.exists(u"QWidget"_qs) && views > 20 && engine > 5);
    }
};

QTEST_GUILESS_MAIN(StructureTest)
#include "StructureTest.moc"
