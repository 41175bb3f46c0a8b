#include "library/TextOrder.h"

QCollator TextOrder::collator()
{
    // The C locale knows neither letters nor numbers.
    const QLocale locale;
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}
