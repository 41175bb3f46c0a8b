#include "app/ui/preferences/AboutViewController.h"

#include "app/Addresses.h"
#include "app/ui/Icons.h"
#include "platform/ui/FocusRing.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDesktopServices>
#include <QFile>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTextBrowser>
#include <QTextDocument>
#include <QtMath>

#include <memory>

namespace {

constexpr int margin = 20;
constexpr int pictureSize = 64;
constexpr int creditsWidth = 440;
constexpr qreal headingScale = 1.6;

/// Has no frame that could show the focus.
class CreditsView : public QTextBrowser {
protected:
    void paintEvent(QPaintEvent* event) override
    {
        QTextBrowser::paintEvent(event);
        if (!hasFocus())
            return;
        QPainter painter(viewport());
        FocusRing::paint(painter, viewport()->rect(), palette());
    }
};

} // namespace

AboutViewController::AboutViewController(QWidget* parent) : QWidget(parent), textView_(new CreditsView)
{
    setWindowTitle(tr("About"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(8);
    addHeading(*column);
    textView_->setObjectName(QStringLiteral("textView"));
    textView_->setAccessibleName(tr("Credits"));
    textView_->setFrameShape(QFrame::NoFrame);
    textView_->viewport()->setAutoFillBackground(false);
    column->addWidget(textView_);
    column->addSpacing(4);
    addButtons(*column);
    showCredits();
}

void AboutViewController::addHeading(QBoxLayout& column)
{
    const QIcon picture = QApplication::windowIcon();
    if (!picture.isNull()) {
        auto* icon = new QLabel;
        icon->setPixmap(picture.pixmap(QSize(pictureSize, pictureSize), devicePixelRatioF()));
        column.addWidget(icon, 0, Qt::AlignHCenter);
    }
    auto* name = new QLabel(tr("Sonvika"));
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * headingScale);
    font.setBold(true);
    name->setFont(font);
    column.addWidget(name, 0, Qt::AlignHCenter);
}

void AboutViewController::addButtons(QBoxLayout& column)
{
    auto* webSite = new QPushButton(Icons::symbol(QStringLiteral("web")), tr("&Web Site"));
    webSite->setObjectName(QStringLiteral("webSiteButton"));
    connect(webSite, &QAbstractButton::clicked, this, &AboutViewController::openWebSite);
    auto* social = new QPushButton(Icons::symbol(QStringLiteral("social")), tr("&Social"));
    social->setObjectName(QStringLiteral("twitterButton"));
    connect(social, &QAbstractButton::clicked, this, &AboutViewController::openSocialPage);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(webSite);
    row->addWidget(social);
    row->addStretch(1);
    column.addLayout(row);
}

QString AboutViewController::creditsResource()
{
    QFile file(QStringLiteral(":/about/credits.html"));
    const auto credits = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    return credits.arg(tr("An editor for the tags of MP3 and M4A files."),
                       tr("Made with TagLib, Qt, GIFLIB, libimagequant, xxHash and zlib."),
                       tr("Thanks to all who make them, and who make them free."),
                       tr("Sonvika is free software: you may use, share and change it under the GNU General Public "
                          "License, version&nbsp;3. It comes without any warranty."));
}

void AboutViewController::showCredits()
{
    const QString version = QCoreApplication::applicationVersion();
    QString credits = creditsResource();
    const QString placeholder = QStringLiteral("sonvikaVersionString");
    const auto place = credits.indexOf(placeholder);
    if (place >= 0)
        credits.replace(place, placeholder.size(), u'v' + version.toHtmlEscaped());
    if (!version.isEmpty())
        textView_->setHtml(credits);
    // The view gives its own document the width that it has now.
    const std::unique_ptr<QTextDocument> measured(textView_->document()->clone());
    measured->setTextWidth(creditsWidth);
    textView_->setFixedHeight(qCeil(measured->size().height()));
    textView_->setVisible(!version.isEmpty());
}

void AboutViewController::openSocialPage()
{
    QDesktopServices::openUrl(Addresses::social());
}

void AboutViewController::openWebSite()
{
    QDesktopServices::openUrl(Addresses::webSite());
}
