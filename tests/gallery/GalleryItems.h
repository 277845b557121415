#pragma once

#include <vector>

// A modulation item to show, as a snapshot describes it.
struct GalleryItem
{
    const char* screen; // names the picture
    const char* kind;
    const char* name;           // in the menu
    const char* title;          // of the popup
    const char* state;          // JSON; %FILES% stands for the folder of sample files
    const char* profile = "{}"; // JSON, likewise
    bool enabled = false;
};

// Every editor, with values as short and as long as they come and in each state that looks different.
[[nodiscard]] const std::vector<GalleryItem>& galleryItems();
