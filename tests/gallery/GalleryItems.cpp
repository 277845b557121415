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
        {"playback", "ARB Playback",
         R"({"FileName":"%FILES%/measurements/spring campaign/five carriers, 20 MHz each.wav","SampleRate":30.72e6,
             "IQScale":70,"SampleOffset":128,"SamplesToUse":123456789,"Period":123456789,"AutoScale":false})",
         R"({"samplesInFile":123456789})"},
        {"playback", "ARB Playback, no file", R"({"SampleRate":1e6,"IQScale":100})"},
        {"streaming", "Streaming",
         R"({"FileList":["%FILES%/tone.wav","%FILES%/a recording with a long name, made in the spring campaign.wav",
             "%FILES%/gone.wav","%FILES%/third.wav","%FILES%/fourth.wav","%FILES%/fifth.wav"],
             "SampleRate":48000,"IQScale":70})"},
        {"streaming", "Streaming, no files", R"({"SampleRate":1e6,"IQScale":100})"},
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
