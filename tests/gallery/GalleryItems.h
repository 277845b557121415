#pragma once

#include <vector>

// A modulation item to render, as a snapshot describes it.
struct GalleryItem
{
    const char* kind;
    const char* title;
    const char* state;          // JSON; %FILES% stands for a folder with WAV files
    const char* profile = "{}"; // JSON
    bool enabled = false;
};

[[nodiscard]] const std::vector<GalleryItem>& galleryItems();
