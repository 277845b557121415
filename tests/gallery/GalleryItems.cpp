#include "gallery/GalleryItems.h"

const std::vector<GalleryItem>& galleryItems()
{
    static const std::vector<GalleryItem> items = {
        {"am", "AM", R"({"Rate":2500,"Depth":33.5,"Shape":"Triangle"})", "{}", true},
        {"fm", "FM", R"({"Rate":1000,"Deviation":123456.789,"Shape":"Sine"})"},
        {"pm", "PM",
         R"({"Rate":1e6,"PhaseDeviation":1.5707963267948966,"InitPhase":-3.14159,"Shape":"Ramp"})"},
        {"pulse", "Pulse", R"({"Width":0.00025,"Period":0.001})"},
        {"digital-ramp", "Digital Ramp", R"({"Span":20e6,"SweepTime":1.234567e-6,"Period":0.01})"},
        {"awgn", "AWGN", R"({"Bandwith":5e6,"Length":0.001234567})"},
        {"dsss", "DSSS",
         R"({"SymbolRate":1234567.891,"FilterAlpha":0.35,"Code":12345678,"FilterLength":64,"SequenceSeed":1,
             "FilterType":"RootRaisedCosine","ModulationType":"QPSK","Oversample":8})",
         R"({"oversampleOptions":[4,8,16]})"},
        {"dsss", "DSSS, rectangular",
         R"({"SymbolRate":1e6,"FilterAlpha":0.35,"Code":1,"FilterLength":8,"SequenceSeed":4294967295,
             "FilterType":"Rectangular","ModulationType":"BPSK","Oversample":4})"},
        {"ofdm", "OFDM",
         R"({"ModulationType":"QAM64","FFTSize":1024,"SymbolCount":14,"GuardBandCarriersLeft":100,
             "GuardBandCarriersRight":99,"GuardInterval":25,"WindowLength":50,"SampleRate":30.72e6,
             "NullDC":true,"Windowed":false})"},
    };
    return items;
}
