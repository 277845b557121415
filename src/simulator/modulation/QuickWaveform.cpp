#include "link/Keys.h"
#include "simulator/modulation/EditorKeys.h"
#include "simulator/modulation/Kinds.h"
#include "simulator/modulation/WaveformItem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace Simulator {

namespace {

using namespace EditorKeys;
namespace Actions = MinibarHelperProtocol::Actions;

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

// Plays a file from below one folder. A chosen file is read in the turn after the one that confirms the
// choice, so that the loading shows.
class QuickWaveform final : public WaveformItem
{
public:
    explicit QuickWaveform(const QString& folder)
        : WaveformItem({QLatin1String("quick-waveform"), QLatin1String("Quick Waveform"),
                        QLatin1String("Quick Waveform")},
                       quickFields(), spelling())
        , m_root(canonical(folder))
    {
        put(currentPath, m_root);
        putLengths();
    }

    [[nodiscard]] std::unique_ptr<ModulationItem> clone() const override
    {
        return std::make_unique<QuickWaveform>(*this);
    }

    [[nodiscard]] QJsonObject profile() const override
    {
        return {{rootPath, m_root},
                {loadedFilePath, path()},
                {loadInProgress, hasWork()},
                {loadError, m_fault},
                {iqsWavLoaded, facts().isIqRecording},
                {samplesInFile, facts().samples}};
    }

    [[nodiscard]] bool hasWork() const override { return !m_chosen.isEmpty(); }

    void work() override
    {
        if (const auto facts = readWaveformFacts(m_chosen, m_fault)) {
            play(m_chosen, *facts);
            put(currentPath, QFileInfo(m_chosen).path());
            putLengths();
        }
        m_chosen.clear();
    }

protected:
    [[nodiscard]] Verdict settle(QLatin1String key, const QJsonObject& before) override
    {
        Verdict refusal = WaveformItem::settle(key, before);
        putLengths();
        return refusal;
    }

    [[nodiscard]] Verdict act(const QString& action, const QJsonObject& arguments) override
    {
        if (action == Actions::select_file)
            return select(arguments.value(EditorKeys::path));
        if (action != Actions::clear_file)
            return ModulationItem::act(action, arguments);
        m_chosen.clear();
        m_fault.clear();
        unload();
        putLengths();
        return {};
    }

private:
    static Spelling spelling()
    {
        return {sampleRate, autoScale, iQScale, period, samplesToUse, sampleOffset};
    }

    static const FieldTable& quickFields()
    {
        static const FieldTable fields = waveformFields(spelling())
                                         << fixedField(currentPath, "folder", QString())
                                         << fixedField(periodLength, "period length", 0)
                                         << fixedField(signalLength, "signal length", 0);
        return fields;
    }

    // The real place of a folder or file; empty when there is none.
    static QString canonical(const QString& path)
    {
        return path.isEmpty() ? QString() : QFileInfo(path).canonicalFilePath();
    }

    void putLengths()
    {
        put(periodLength, hasFile() ? number(period) / number(sampleRate) : 0);
        put(signalLength, number(samplesToUse) / number(sampleRate));
    }

    [[nodiscard]] Verdict select(const QJsonValue& chosen)
    {
        if (!chosen.isString())
            return invalid(translated("The path of the file must be a text."));
        const QString path = canonical(chosen.toString());
        if (path.isEmpty() || !QFileInfo(path).isFile())
            return invalid(translated("There is no file '%1'.").arg(chosen.toString()));
        if (m_root.isEmpty() || !path.startsWith(m_root + QLatin1Char('/')))
            return invalid(translated("'%1' does not lie in the folder of the waveforms.").arg(path));
        m_chosen = path;
        m_fault.clear();
        return {};
    }

    QString m_root;   // canonical; empty when the folder does not exist
    QString m_chosen; // canonical path of the file that is being loaded
    QString m_fault;  // of the last loading
};

} // namespace

std::unique_ptr<ModulationItem> makeQuickWaveform(const QString& folder)
{
    return std::make_unique<QuickWaveform>(folder);
}

} // namespace Simulator
