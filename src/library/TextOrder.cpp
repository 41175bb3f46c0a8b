#include "library/TextOrder.h"

QLocale TextOrder::locale()
{
    // The C locale knows neither letters nor numbers.
    const QLocale wanted = QLocale().collation();
    return wanted.language() == QLocale::C ? QLocale(QLocale::English) : wanted;
}

QCollator TextOrder::collator()
{
    QCollator collator(locale());
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}
