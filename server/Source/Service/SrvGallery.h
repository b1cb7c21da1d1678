#pragma once
// The page for people: every shared map with its sharer, name, block size, thumbnail and a
// download link, as plain HTML that reads on a phone and needs no script.
#include "SrvStore.h"

#include <string>
#include <vector>

class SrvGallery {
public:
    static std::string Page(const std::vector<SrvMapEntry>& maps);
    // Text made safe inside HTML elements and attribute values.
    static std::string Escape(const std::string& text);
    // Text made safe as one piece of a URL path (percent-encoded).
    static std::string UrlPiece(const std::string& text);
};
