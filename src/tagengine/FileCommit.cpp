#include "tagengine/FileCommit.h"

#include "tagengine/FailureReason.h"

namespace FileCommit {

CommitResult commit(const FileChange& change)
{
    removeLeftovers(change.folder());
    const auto otherWay = [&](CommitResult result, auto way) {
        if (result != CommitResult::Impossible)
            return result;
        FailureReason::clear();
        return way(change);
    };
    // A file with several names keeps them only when it is changed in place.
    const bool mayReplace = change.identity.links == 1;
    if (change.content.keepsPlaces() || !mayReplace) {
        const CommitResult result = overwrite(change);
        return mayReplace ? otherWay(result, replace) : result;
    }
    return otherWay(replace(change), overwrite);
}

} // namespace FileCommit
