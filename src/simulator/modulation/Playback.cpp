#include "link/Keys.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/WaveformItem.h"

#include <QCoreApplication>

namespace Simulator {

namespace {

using namespace EditorKeys;
namespace Actions = MinibarHelperProtocol::Actions;

// Plays one file, wherever it lies. An I/Q recording is played as it was recorded: whole and scaled by
// itself.
class Playback final : public WaveformItem
{
public:
    Playback()
        : WaveformItem({QLatin1String("playback"), QLatin1String("Playback"), QLatin1String("ARB Playback")},
                       playbackFields(), spelling())
    {}

    [[nodiscard]] std::unique_ptr<ModulationItem> clone() const override
    {
        return std::make_unique<Playback>(*this);
    }

    [[nodiscard]] QJsonObject profile() const override
    {
        const bool editable = !facts().isIqRecording;
        return {{autoScaleLocked, !editable},
                {sampleOffsetEditable, editable},
                {samplesToUseEditable, editable},
                {periodEditable, editable},
                {samplesInFile, facts().samples}};
    }

protected:
    [[nodiscard]] QString lockOf(QLatin1String key) const override
    {
        if (key == FileName)
            return {};
        if (facts().isIqRecording && key != SampleRate)
            return QCoreApplication::translate("Simulator",
                                               "An I/Q recording is played whole and scaled by itself.");
        return WaveformItem::lockOf(key);
    }

    [[nodiscard]] Verdict settle(QLatin1String key, const QJsonObject& before) override
    {
        if (key != FileName)
            return WaveformItem::settle(key, before);
        const QString file = word(FileName);
        if (file.isEmpty()) {
            unload();
            return {};
        }
        QString fault;
        const auto read = readWaveformFacts(file, fault);
        if (!read)
            return invalid(fault);
        play(file, *read);
        return {};
    }

    [[nodiscard]] Verdict act(const QString& action, const QJsonObject& arguments) override
    {
        if (action != Actions::clear_file)
            return ModulationItem::act(action, arguments);
        put(FileName, QString());
        unload();
        return {};
    }

private:
    static Spelling spelling()
    {
        return {SampleRate, AutoScale, IQScale, Period, SamplesToUse, SampleOffset};
    }

    static const FieldTable& playbackFields()
    {
        static const FieldTable fields = waveformFields(spelling()) << textField(FileName, "file name");
        return fields;
    }
};

} // namespace

std::unique_ptr<ModulationItem> makePlayback()
{
    return std::make_unique<Playback>();
}

} // namespace Simulator
