#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Result.h"
#include "foundation/Url.h"

namespace corvane {

/// Security-scoped bookmarks of NSURL: bytes that find a file again after it was renamed or moved.
/// Main thread.
class Bookmarks {
public:
    virtual ~Bookmarks() = default;
    /// Bookmark data of a file URL, with security scope; an error where nothing stands at the URL.
    virtual Result<Bytes> create(const Url& url) = 0;
    /// The place of the file now, also where another one stands at the place at which it was. An
    /// error where it can't be found; never the URL of another file.
    virtual Result<Url> resolve(const Bytes& bookmark) = 0;
    /// startAccessingSecurityScopedResource; false where access isn't given.
    virtual bool startAccessing(const Url& url) = 0;
    virtual void stopAccessing(const Url& url) = 0;
};

} // namespace corvane
