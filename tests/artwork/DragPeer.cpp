// Another program at the end of a drag: a window that offers what it is told to, or takes what is dropped on it.
//
//   drag-peer target X Y FOLDER               copies dropped files into FOLDER
//   drag-peer source X Y [MIME-TYPE=FILE ...] offers the contents of each FILE; with "die" instead of a file, it ends
//                                             when it is asked for them
//
// Prints a line when it is shown, and one for each drop or drag that came to its end.

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <cstdio>

#include <unistd.h>

namespace {

void say(const char* text)
{
    std::puts(text);
    std::fflush(stdout);
}

class Target : public QWidget {
public:
    explicit Target(const QString& folder) : folder_(folder) { setAcceptDrops(true); }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent* event) override
    {
        event->acceptProposedAction();
        for (const auto& url : event->mimeData()->urls())
            QFile::copy(url.toLocalFile(), folder_ + u'/' + url.fileName());
        say(event->dropAction() == Qt::CopyAction ? "copied" : "moved");
    }

private:
    QString folder_;
};

class Offer : public QMimeData {
public:
    explicit Offer(const QStringList& offers) : offers_(offers) {}
    QStringList formats() const override
    {
        QStringList types;
        for (const auto& offer : offers_)
            types.append(offer.section(u'=', 0, 0));
        return types;
    }

protected:
    QVariant retrieveData(const QString& type, QMetaType) const override
    {
        for (const auto& offer : offers_) {
            if (offer.section(u'=', 0, 0) != type)
                continue;
            const QString path = offer.section(u'=', 1);
            if (path == u"die")
                ::_exit(0);
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }
        return {};
    }

private:
    QStringList offers_;
};

class Source : public QWidget {
public:
    explicit Source(const QStringList& offers) : offers_(offers) {}

protected:
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (!(event->buttons() & Qt::LeftButton))
            return;
        auto* drag = new QDrag(this);
        drag->setMimeData(new Offer(offers_));
        say(drag->exec(Qt::CopyAction) == Qt::CopyAction ? "taken" : "refused");
    }

private:
    QStringList offers_;
};

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    std::unique_ptr<QWidget> window;
    if (arguments.value(1) == u"target")
        window = std::make_unique<Target>(arguments.value(4));
    else
        window = std::make_unique<Source>(arguments.mid(4));
    window->setGeometry(arguments.value(2).toInt(), arguments.value(3).toInt(), 200, 200);
    window->show();
    say("shown");
    return QApplication::exec();
}
