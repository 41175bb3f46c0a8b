#include "app/ui/Contrast.h"
#include "app/ui/ProgramStyle.h"
#include "fakes/Windows.h"
#include "support/Rows.h"

#include <QLabel>
#include <QPushButton>

/// What can be seen: the focus, and texts.
class AppearanceTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ProgramStyle::install();
        QCoreApplication::setApplicationVersion(u"1.2.3"_qs);
        desktop_ = QApplication::palette();
    }
    void init() { windows_ = std::make_unique<Windows>(); }
    void cleanup()
    {
        windows_.reset();
        QApplication::setPalette(desktop_);
    }

    void focusShows_data() { Windows::addRows({u" | light"_qs, u" | dark"_qs}); }
    void focusShows()
    {
        const auto [name, mode] = row<2>();
        wear(mode);
        auto& window = windows_->open(name);
        QStringList unseen;
        const auto chain = tabChain(window);
        QVERIFY(!chain.isEmpty());
        for (auto* widget : chain) {
            widget->setFocus(Qt::TabFocusReason);
            if (auto* field = qobject_cast<QLineEdit*>(widget))
                field->deselect();
            const QImage with = picture(window, *widget);
            QVERIFY2(widget->hasFocus(), qPrintable(widgetText(*widget)));
            widget->clearFocus();
            if (picture(window, *widget) == with)
                unseen.append(widgetText(*widget));
        }
        QCOMPARE(unseen.join(u'\n'), QString());
    }

    void colourPairsHaveContrast_data() { addRows({"desktop", "light", "dark", "weak"}); }
    void colourPairsHaveContrast()
    {
        using Role = QPalette::ColorRole;
        constexpr std::pair<Role, Role> pairs[]{
            {QPalette::Text, QPalette::Base},
            {QPalette::Text, QPalette::AlternateBase},
            {QPalette::WindowText, QPalette::Window},
            {QPalette::ButtonText, QPalette::Button},
            {QPalette::PlaceholderText, QPalette::Base},
            {QPalette::PlaceholderText, QPalette::Window},
            {QPalette::HighlightedText, QPalette::Highlight},
            {QPalette::Link, QPalette::Base},
            {QPalette::Link, QPalette::Window},
            {QPalette::ToolTipText, QPalette::ToolTipBase},
        };
        QCOMPARE(qRound(Contrast::ratio(Qt::black, Qt::white)), 21);
        QCOMPARE(qRound(Contrast::ratio(QColor(0x76, 0x76, 0x76), Qt::white) * 100), 454);
        wear(row()[0]);
        const auto colours = QApplication::palette();
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            for (const auto& [text, background] : pairs) {
                const double ratio = Contrast::ratio(colours.color(group, text), colours.color(group, background));
                QVERIFY2(ratio >= Contrast::enough,
                         qPrintable(u"%1 on %2: %3"_qs.arg(text).arg(background).arg(ratio)));
            }
        }
    }

    void paintedTextsHaveContrast_data() { Windows::addRows({u" | desktop"_qs, u" | light"_qs, u" | dark"_qs}); }
    void paintedTextsHaveContrast()
    {
        const auto [name, mode] = row<2>();
        wear(mode);
        auto& window = windows_->open(name);
        const QImage all = render(window);
        QStringList weak;
        int texts = 0;
        for (auto* widget : window.findChildren<QWidget*>()) {
            const auto* label = qobject_cast<QLabel*>(widget);
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            const bool isText = (label && !label->text().isEmpty()) || (button && !button->text().isEmpty())
                                || qobject_cast<TokenField*>(widget);
            if (!isText || !widget->isEnabled() || !widget->isVisibleTo(&window) || widget->visibleRegion().isEmpty())
                continue;
            ++texts;
            const double ratio = strongestContrast(all, QRect(widget->mapTo(&window, QPoint()), widget->size()));
            if (ratio < Contrast::enough)
                weak.append(widgetText(*widget) + u": "_qs + QString::number(ratio));
        }
        QCOMPARE(weak.join(u'\n'), QString());
        QVERIFY(texts > 0);
    }

private:
    /// Gives the program the colours that it has in an appearance, or on a desktop with weak colours.
    void wear(const QString& mode)
    {
        if (mode == u"weak") {
            QPalette weak(QColor(0xef, 0xf0, 0xf1));
            weak.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 90));
            weak.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
            weak.setColor(QPalette::HighlightedText, Qt::white);
            weak.setColor(QPalette::Link, QColor(0x29, 0x80, 0xb9));
            QApplication::setPalette(weak);
        }
        Appearance appearance;
        if (mode == u"light" || mode == u"dark")
            appearance.apply(mode == u"dark" ? Appearance::Mode::Dark : Appearance::Mode::Light);
        QCoreApplication::processEvents();
    }
    static QImage render(QWidget& window)
    {
        QImage image(window.size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        window.render(&image);
        return image;
    }
    /// The contrast between the most frequent colour of a place and the one that differs most from it.
    static double strongestContrast(const QImage& image, const QRect& place)
    {
        QHash<QRgb, int> counts;
        for (int y = place.top() * scale; y < std::min(image.height(), (place.bottom() + 1) * scale); ++y) {
            for (int x = place.left() * scale; x < std::min(image.width(), (place.right() + 1) * scale); ++x)
                ++counts[image.pixel(x, y)];
        }
        const auto fewer = [&](QRgb a, QRgb b) { return counts[a] < counts[b]; };
        const auto colours = counts.keys();
        const QColor background(*std::max_element(colours.begin(), colours.end(), fewer));
        double strongest = 1;
        for (const QRgb colour : colours)
            strongest = std::max(strongest, Contrast::ratio(QColor(colour), background));
        return strongest;
    }
    static QImage picture(QWidget& window, const QWidget& widget)
    {
        const int margin = 4;
        const QRect place(widget.mapTo(&window, QPoint()), widget.size());
        return window.grab(place.adjusted(-margin, -margin, margin, margin)).toImage();
    }

    /// Fine enough for letters to have a core of their own colour.
    static constexpr int scale = 3;

    QPalette desktop_;
    std::unique_ptr<Windows> windows_;
};

QTEST_MAIN(AppearanceTest)
#include "AppearanceTest.moc"
