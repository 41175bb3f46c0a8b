#pragma once

#include <QProcess>

/// What other programs see in a file. A program that is missing or fails gives a text that says so.
namespace OtherReaders {

inline QString output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("/usr/bin/") + program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return program + QStringLiteral(" failed: ") + process.errorString()
               + QString::fromUtf8(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

/// The Python expression @p expression, where `tags` are the file's tags as mutagen reads them and `data` its bytes.
inline QString mutagen(const QString& path, const QString& expression)
{
    const auto script = QStringLiteral("import sys, mutagen\nfrom mutagen.apev2 import APEv2\npath = sys.argv[1]\n"
                                       "tags = mutagen.File(path).tags\ndata = open(path, 'rb').read()\n"
                                       "sys.stdout.buffer.write(str((%1)).encode())");
    return output(QStringLiteral("python3"), {QStringLiteral("-c"), script.arg(expression), path});
}

inline QString pictureCodec(const QString& path)
{
    const auto options =
        QStringLiteral("-v error -show_entries stream=codec_name -of csv=p=0").split(QLatin1Char(' '));
    return output(QStringLiteral("ffprobe"), options + QStringList(path));
}

/// A digest of the encoded sound, as ffmpeg finds it.
inline QString soundDigest(const QString& path)
{
    QStringList arguments = QStringLiteral("-v error -i PATH -map 0:a -c copy -f md5 -").split(QLatin1Char(' '));
    return output(QStringLiteral("ffmpeg"), arguments.replaceInStrings(QStringLiteral("PATH"), path));
}

} // namespace OtherReaders
