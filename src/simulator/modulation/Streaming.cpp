#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/WaveformFile.h"

#include <QCoreApplication>

namespace Simulator {

namespace {

using namespace EditorKeys;
using namespace InstrumentLimits;

constexpr int mostFiles = 256;

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

const FieldTable& streamingFields()
{
    static const FieldTable fields = {
        numberField(SampleRate, 1e6, {"sample rate", Unit::Hertz, 1, maximumSampleRateHz}),
        numberField(IQScale, 100, {"I/Q scale", Unit::Percent, 0.01, 100}),
        textsField(FileList, "file list"),
    };
    return fields;
}

// Plays the files of a list one after another, in the order of the list.
class Streaming final : public ModulationItemOf<Streaming>
{
public:
    Streaming()
        : ModulationItemOf(
              {QLatin1String("streaming"), QLatin1String("Streaming"), QLatin1String("Streaming")},
              streamingFields())
    {}

    [[nodiscard]] QString reasonToStayOff() const override
    {
        return state().value(FileList).toArray().isEmpty() ? translated("Streaming has no files to play.")
                                                           : QString();
    }

protected:
    // A file is looked at when it comes into the list, not again when the list is turned round or one of its
    // files has gone.
    [[nodiscard]] Verdict settle(QLatin1String key, const QJsonObject& before) override
    {
        if (key != FileList)
            return {};
        const QJsonArray known = before.value(FileList).toArray();
        const QJsonArray wanted = state().value(FileList).toArray();
        QJsonArray files;
        for (const QJsonValue file : wanted) {
            const QString path = file.toString();
            if (path.isEmpty())
                continue;
            QString fault;
            if (!known.contains(file) && !readWaveformFacts(path, fault))
                return invalid(fault);
            files.append(file);
        }
        if (files.size() > mostFiles)
            return invalid(translated("The file list must not hold more than %1 files.").arg(mostFiles));
        put(FileList, files);
        return {};
    }
};

} // namespace

std::unique_ptr<ModulationItem> makeStreaming()
{
    return std::make_unique<Streaming>();
}

} // namespace Simulator
