#include "cli/HelpTexts.h"

#include <algorithm>
#include <array>

namespace {

struct Topic {
    const char* name;
    const char* text;
};

constexpr auto program = R"(Usage: sonvika-cli COMMAND [OPTION …] FILE …

Shows and changes the tags, cover art and chapters of MP3 and M4A files.

Commands:
  show               Show what the files hold
  set                Set or clear tags
  number             Number the tracks 1, 2, 3 …
  strip-unsupported  Remove what has no name as a tag, keeping the cover art
  strip-all          Remove all tags and the cover art
  art get            Save the cover art
  art set            Set the cover art
  art remove         Remove the cover art
  chapters get       Show the chapters
  chapters set       Replace the chapters
  rename             Name the files by their tags
  type               Tell the type of the files
  recover            See after changes that were interrupted
  help [COMMAND]     Show this text, or that of a command

Options:
  -h, --help  Show this text; after a command, that of the command
  --version   Show the version

A FILE may be a folder, which stands for the MP3 and M4A files below it, or
"-", which stands for names read from standard input. "--" ends the options.

Exit status: 0 when all was done, 1 when some files failed, 2 for wrong usage.

Example:
  sonvika-cli set --tag GENRE=Jazz --tag YEAR=1959 ~/Music/'Kind of Blue'
)";

constexpr auto show = R"(Usage: sonvika-cli show [--json] FILE …

Shows the type, tags, cover art and chapters of each file.

Options:
  --json             Print one JSON array with an object for each file
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Example:
  sonvika-cli show --json ~/Music | jq -r '.[].tags.TITLE'
)";

constexpr auto set = R"(Usage: sonvika-cli set --tag KEY=VALUE [--tag …] FILE …

Sets tags in every file; tags that are not given stay as they are. An empty
VALUE clears the tag. A tag with several values has VALUE alone afterwards.

Options:
  --tag KEY=VALUE    The tag KEY gets the text VALUE. Can be given several
                     times
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Keys:
  TITLE, ARTIST, ALBUM, ALBUMARTIST, YEAR, GENRE, COMMENT, TRACKNUMBER,
  DISCNUMBER, COMPILATION, or any other; upper and lower case are the same.
  TRACKNUM, TRACKTOTAL, DISCNUM and DISCTOTAL set one half of a number such as
  "3/12" and keep the other.

Example:
  sonvika-cli set --tag ALBUM='Kind of Blue' --tag COMMENT= *.mp3
)";

constexpr auto number = R"(Usage: sonvika-cli number FILE …

Numbers the tracks 1, 2, 3 … in the order of the arguments. Each file keeps its
own number of tracks in total.

Options:
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Example:
  sonvika-cli number intro.mp3 first.mp3 second.mp3
)";

constexpr auto stripUnsupported = R"(Usage: sonvika-cli strip-unsupported FILE …

Removes all that has no name as a tag from files with cover art. The cover art
stays, and files without cover art are left alone.

Options:
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Example:
  sonvika-cli strip-unsupported ~/Music/Bought
)";

constexpr auto stripAll = R"(Usage: sonvika-cli strip-all FILE …

Removes the cover art and all tags.

Options:
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Example:
  sonvika-cli strip-all recording.mp3
)";

constexpr auto art = R"(Usage: sonvika-cli art get --output IMAGE [--convert] FILE
       sonvika-cli art set --image IMAGE FILE …
       sonvika-cli art remove FILE …

Saves, sets or removes the cover art.

Each command has a text of its own: sonvika-cli art get --help

Example:
  sonvika-cli art set --image cover.jpg *.m4a
)";

constexpr auto artGet = R"(Usage: sonvika-cli art get --output IMAGE [--convert] FILE

Saves the cover art of one file, byte for byte as it is stored.

Options:
  --output IMAGE  Where to save it; "-" is standard output
  --convert       Convert it when the name of IMAGE ends with that of another
                  format: .jpeg, .jpg, .png, .tiff, .tif, .gif or .bmp
  -h, --help      Show this text

Example:
  sonvika-cli art get --output cover.png --convert song.mp3
)";

constexpr auto artSet = R"(Usage: sonvika-cli art set --image IMAGE FILE …

Stores a picture, as it is, as the cover art of every file.

Options:
  --image IMAGE      The picture
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Example:
  sonvika-cli art set --image cover.jpg ~/Music/'Kind of Blue'
)";

constexpr auto artRemove = R"(Usage: sonvika-cli art remove FILE …

Removes the cover art.

Options:
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Example:
  sonvika-cli art remove *.mp3
)";

constexpr auto chapters = R"(Usage: sonvika-cli chapters get [--json] FILE
       sonvika-cli chapters set [--chapter TITLE@MS …] FILE

Shows or replaces the chapters of an MP3 file.

Each command has a text of its own: sonvika-cli chapters set --help

Example:
  sonvika-cli chapters get podcast.mp3
)";

constexpr auto chaptersGet = R"(Usage: sonvika-cli chapters get [--json] FILE

Shows the chapters of one MP3 file, a line for each: where it starts in
milliseconds, a tab, and its title.

Options:
  --json      Print a JSON list of objects with title and start_ms
  -h, --help  Show this text

Example:
  sonvika-cli chapters get podcast.mp3
)";

constexpr auto chaptersSet = R"(Usage: sonvika-cli chapters set [--chapter TITLE@MS …] FILE

Replaces all chapters of one MP3 file. Without --chapter all are removed.

Options:
  --chapter TITLE@MS  A chapter that starts after MS milliseconds, 0 to
                      2147483647. TITLE can't hold "@". Can be given several
                      times
  -h, --help          Show this text

Example:
  sonvika-cli chapters set --chapter Intro@0 --chapter News@93500 podcast.mp3
)";

constexpr auto rename = R"(Usage: sonvika-cli rename [--token TEXT …] [--dry-run] FILE …

Names the files by their tags. A file keeps its extension; a "/" in a name
leads into a folder in that of the file, which has to be there; a name that
leads out of the folder is refused, and so is a line break that comes out of
a tag. No file is ever replaced.
Without --token the format that was stored in Sonvika's window is used.

Options:
  --token TEXT       The next piece of the name: the value of a field, or else
                     TEXT itself. Can be given several times
  --dry-run          Only print the old and the new names, and remarks
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Fields:
  Track, Title, Album, Year, Artist, "Album Artist", Disc, Genre

Example:
  sonvika-cli rename --dry-run --token Track --token ' - ' --token Title *.mp3
)";

constexpr auto type = R"(Usage: sonvika-cli type [--content] FILE …

Tells the type of each file: its extension in lower case or, for a name without
one, what the content is: mp3, m4a, wav or aif.

Options:
  --content          Always look at the content
  --files-from FILE  Read more names from FILE, or from "-", standard input
  -h, --help         Show this text

Example:
  sonvika-cli type --content download
)";

constexpr auto recover = R"(Usage: sonvika-cli recover [--json]
       sonvika-cli recover --restore ID …
       sonvika-cli recover --forget ID …

Takes back the changes of files that the end of a program or of the power
interrupted, as every command does. What can't be taken back, as the file is not
what the change left, is listed: its ID, a tab, the reason, a tab, and the file.

Options:
  --json      Print a JSON list of objects with id, path and reason
  --restore   Save the file as it was before the change beside it, print the name
              of that copy, and forget the change
  --forget    Leave the file as it is, and forget the change
  -h, --help  Show this text

Exit status: 0 when nothing is left or all was done, 1 otherwise.

Example:
  sonvika-cli recover --restore 0-5d1c0a97e3b8f246
)";

constexpr std::array topics{
    Topic{"", program},
    Topic{"help", program},
    Topic{"show", show},
    Topic{"set", set},
    Topic{"number", number},
    Topic{"strip-unsupported", stripUnsupported},
    Topic{"strip-all", stripAll},
    Topic{"art", art},
    Topic{"art get", artGet},
    Topic{"art set", artSet},
    Topic{"art remove", artRemove},
    Topic{"chapters", chapters},
    Topic{"chapters get", chaptersGet},
    Topic{"chapters set", chaptersSet},
    Topic{"rename", rename},
    Topic{"type", type},
    Topic{"recover", recover},
};

} // namespace

QString HelpTexts::about(const QString& topic)
{
    const auto* const found = std::find_if(topics.begin(), topics.end(),
                                           [&](const Topic& known) { return topic == QLatin1String(known.name); });
    return found == topics.end() ? QString() : QString::fromUtf8(found->text);
}
