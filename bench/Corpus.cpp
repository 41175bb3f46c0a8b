#include "Corpus.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>

#include <taglib/fileref.h>
#include <taglib/tpropertymap.h>
#include <taglib/tvariant.h>

#include <array>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr int kinds = 4;
constexpr int albumSize = 10;
constexpr int coverEdge = 1000;
constexpr int coverBytes = 300'000;
constexpr std::uintmax_t neededBytes = 1'000'000'000;
constexpr std::array words{"Lantern", "Harbour", "Winter", "Glass", "River", "Silent", "Copper", "Meadow",
                           "Signal",  "Ember",   "Paper",  "North", "Tide",  "Hollow", "Marble", "Orchard"};

bool isM4a(int kind)
{
    return kind % 2 == 1;
}

bool hasCover(int kind)
{
    return kind < 2;
}

const char* extension(int kind)
{
    return isM4a(kind) ? ".m4a" : ".mp3";
}

std::string phrase(int number, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i, number = number / 3 + 5) {
        text += i ? " " : "";
        text += words[static_cast<std::size_t>(number) % words.size()];
    }
    return text;
}

/// A picture with so much noise in it that it takes about the wanted bytes.
TagLib::ByteVector makeCover()
{
    QRandomGenerator random(1);
    QImage image(coverEdge, coverEdge, QImage::Format_RGB32);
    for (int y = 0; y < coverEdge; ++y) {
        for (int x = 0; x < coverEdge; ++x)
            image.setPixel(x, y, qRgb(x / 8 + random.bounded(48), y / 8 + random.bounded(48), random.bounded(48)));
    }
    QByteArray bytes;
    for (int quality = 90; bytes.isEmpty() || bytes.size() > coverBytes; quality -= 3) {
        bytes.clear();
        QBuffer buffer(&bytes);
        image.save(&buffer, "JPEG", quality);
    }
    return {bytes.constData(), static_cast<unsigned int>(bytes.size())};
}

/// The sound of a sample without its tags.
void makeSeed(const fs::path& path, int kind)
{
    const fs::path sample = isM4a(kind) ? "02 Lantern Road.m4a" : "01 Low Tide.mp3";
    fs::copy_file(SONVIKA_SAMPLES / sample, path);
    TagLib::FileRef file(path.c_str(), false);
    file.file()->setComplexProperties("PICTURE", {});
    file.file()->setProperties({});
    if (!file.save())
        throw std::runtime_error("cannot write " + path.string());
}

void writeTags(const fs::path& path, int number, const TagLib::ByteVector* cover)
{
    const auto text = [](const std::string& value) { return TagLib::StringList(TagLib::String(value)); };
    TagLib::PropertyMap tags;
    tags["TITLE"] = text(phrase(number, 3) + " " + std::to_string(number));
    tags["ARTIST"] = tags["ALBUMARTIST"] = text("The " + phrase(number / 50, 2));
    tags["ALBUM"] = text(phrase(number / albumSize, 3) + " " + std::to_string(number / albumSize));
    tags["TRACKNUMBER"] = text(std::to_string(number % albumSize + 1) + "/" + std::to_string(albumSize));
    tags["DISCNUMBER"] = text("1/1");
    tags["DATE"] = text(std::to_string(1970 + number / albumSize % 50));
    tags["GENRE"] = text("Ambient");
    tags["COMMENT"] = text("Recorded for the benchmark, take " + std::to_string(number));
    tags["COMPOSER"] = text(phrase(number, 2));
    TagLib::FileRef file(path.c_str(), false);
    file.file()->setProperties(tags);
    if (cover) {
        const TagLib::VariantMap picture{
            {"data", *cover}, {"mimeType", "image/jpeg"}, {"pictureType", "Front Cover"}};
        file.file()->setComplexProperties("PICTURE", {picture});
    }
    if (!file.save())
        throw std::runtime_error("cannot write " + path.string());
}

fs::path poolFile(const fs::path& pool, int number)
{
    return pool / (std::to_string(number) + extension(number % kinds));
}

void fillPool(const fs::path& pool)
{
    const TagLib::ByteVector cover = makeCover();
    for (int number = 0; number < Corpus::poolSize; ++number) {
        const fs::path path = poolFile(pool, number);
        if (number < kinds)
            makeSeed(path, number);
        else
            fs::copy_file(poolFile(pool, number % 2 + 2), path);
        writeTags(path, number, hasCover(number % kinds) ? &cover : nullptr);
    }
}

} // namespace

Corpus::Corpus(const QString& root) : root_(QFile::encodeName(root).toStdString()), pool_(root_ / "pool")
{
    if (fs::exists(pool_))
        return;
    fs::create_directories(root_);
    if (fs::space(root_).available < neededBytes)
        throw std::runtime_error("less than 1 GB is free below " + root_.string());
    const fs::path unfinished = root_ / "pool.unfinished";
    fs::remove_all(unfinished);
    fs::create_directory(unfinished);
    fillPool(unfinished);
    fs::rename(unfinished, pool_);
}

QString Corpus::folder(int count, Kind kind) const
{
    const fs::path folder = root_ / (std::to_string(count) + "-" + std::to_string(kind));
    for (int i = 0; i < count; ++i) {
        const int number = (kind == Mixed ? i : i * kinds + kind) % poolSize;
        const fs::path album =
            folder / ("Artist " + std::to_string(i / 100)) / ("Album " + std::to_string(i / albumSize));
        fs::create_directories(album);
        const std::string name = std::to_string(i % albumSize + 1) + " " + phrase(i, 3) + extension(number % kinds);
        if (!fs::exists(album / name))
            fs::create_hard_link(poolFile(pool_, number), album / name);
    }
    return QFile::decodeName(folder.c_str());
}
