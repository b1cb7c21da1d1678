#include "SrvGallery.h"

std::string SrvGallery::Escape(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (unsigned char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            out += c < 32 ? ' ' : static_cast<char>(c);
        }
    }
    return out;
}

std::string SrvGallery::UrlPiece(const std::string& text) {
    static const char* hex = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : text) {
        bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                     c == '_' || c == '.' || c == '~';
        if (plain) {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

std::string SrvGallery::Page(const std::vector<SrvMapEntry>& maps) {
    std::string html =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<title>Quillmaze shared maps</title>\n<style>\n"
        "body{font-family:sans-serif;margin:0;padding:1em;background:#1d2333;color:#eef}\n"
        "h1{font-size:1.6em;margin:0 0 .2em}p.lead{margin:0 0 1em;color:#bbc}\n"
        "ul{list-style:none;padding:0;margin:0;display:grid;gap:1em;"
        "grid-template-columns:repeat(auto-fill,minmax(180px,1fr))}\n"
        "li{background:#2a3248;border-radius:8px;padding:.6em}\n"
        "img{display:block;width:100%;max-width:320px;height:auto;image-rendering:pixelated;border-radius:"
        "4px}\n"
        ".name{font-weight:bold;margin:.4em 0 0}.who,.size{color:#bbc;font-size:.9em;margin:.1em 0}\n"
        "a{color:#ffd25e}\n</style>\n</head>\n<body>\n<h1>Quillmaze shared maps</h1>\n";
    html += "<p class=\"lead\">" + std::to_string(maps.size()) + (maps.size() == 1 ? " map" : " maps") +
            " shared by players. Download one and open it in the game.</p>\n";
    if (maps.empty()) {
        html += "<p>No maps are shared yet.</p>\n";
    } else {
        html += "<ul>\n";
        for (const SrvMapEntry& map : maps) {
            std::string name = Escape(map.mapName);
            std::string link = "/uploads/" + std::to_string(map.userId) + "/" + UrlPiece(map.fileName);
            html += "<li class=\"map\"><img src=\"/thumbs/" + std::to_string(map.id) + ".png\" alt=\"" +
                    name + "\" width=\"160\" height=\"160\">";
            html += "<p class=\"name\">" + name + "</p><p class=\"who\">by " + Escape(map.userName) + "</p>";
            std::string cells = map.blockSize == 32 ? "20" : "10";
            html += "<p class=\"size\">" + cells + " &times; " + cells + "</p>";
            html += "<a class=\"download\" href=\"" + link + "\" download>Download " + Escape(map.fileName) +
                    "</a></li>\n";
        }
        html += "</ul>\n";
    }
    html += "</body>\n</html>\n";
    return html;
}
