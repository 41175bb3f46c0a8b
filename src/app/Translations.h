#pragma once

class QLocale;

/// The languages that the program speaks.
namespace Translations {

/// Lets every text that is made from now on be in the first of the user's languages that the program speaks, English
/// when it speaks none of them; the texts of Qt's own parts are then in the same language, where Qt is translated.
/// The application must exist.
void install(const QLocale& user);

} // namespace Translations
