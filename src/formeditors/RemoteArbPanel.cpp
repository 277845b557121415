#include "formeditors/FormPanel.h"
#include "formeditors/FormPanels.h"
#include "formeditors/SampleCounts.h"
#include "formeditors/WavFileChoice.h"
#include "ui_RemoteArbPanel.h"

#include <QCoreApplication>
#include <QPointer>

namespace {

constexpr char context[] = "RemoteArbPanel";

QString fileNameKey()
{
    return QStringLiteral("FileName");
}

QString autoScaleKey()
{
    return QStringLiteral("AutoScale");
}

using Form = Ui::ArbPanel;

// clang-format off
constexpr NumericRow<Form> numericFields[] = {
    // button, key, title, quantity, step, decimals, minimum, maximum, tag, scale
    {&Form::btnSampleRate, {"SampleRate", QT_TRANSLATE_NOOP("RemoteArbPanel", "Sample Rate"), Quantity::Frequency, 1e6, 3, 1}},
    {&Form::btnIQScale, {"IQScale", QT_TRANSLATE_NOOP("RemoteArbPanel", "I/Q Scale(%)"), Quantity::Number, 1, 2, 0.01, 100}},
    {&Form::btnSampleOffset, {"SampleOffset", QT_TRANSLATE_NOOP("RemoteArbPanel", "Sample Offset"), Quantity::Integer, 1, 0, 0, {}, "125"}},
    {&Form::btnSamplesToUse, {"SamplesToUse", QT_TRANSLATE_NOOP("RemoteArbPanel", "Samples To Use"), Quantity::Integer, 1, 0, 0, {}, "125"}},
    {&Form::btnPeriod, {"Period", QT_TRANSLATE_NOOP("RemoteArbPanel", "Period_Arb"), Quantity::Integer, 1, 0, 1, {}, "125"}},
};
// clang-format on

constexpr SwitchRow<Form> switchFields[] = {
    {&Form::btnAutoScale, "AutoScale"},
};

// Plays one file.
class RemoteArbPanel final : public FormPanel<Form>
{
    Q_DECLARE_TR_FUNCTIONS(RemoteArbPanel)

public:
    explicit RemoteArbPanel(QWidget* parent)
        : FormPanel(context, parent)
    {
        bindEnableSwitch(form().enabled);
        bind(numericFields);
        bind(switchFields);
        form().btnFileName->setLabelElideMode(Qt::ElideMiddle);
        connect(form().btnLoad, &InfoButton::clicked, this, &RemoteArbPanel::load);
    }

protected:
    void applyPanelState() override
    {
        const QString file = editorState().value(fileNameKey()).toString();
        const bool hasFile = !file.isEmpty();
        // Before the text: a button that has a tool tip makes none of a text that is cut.
        if (form().btnFileName->toolTip() != file)
            form().btnFileName->setToolTip(file);
        form().btnFileName->setLabelText(hasFile ? file : tr("N/A"));
        form().btnSampleRate->setEnabled(hasFile);
        form().btnAutoScale->setEnabled(hasFile && !isAutoScaleLocked());
        form().btnIQScale->setEnabled(hasFile && !isSwitchOn(autoScaleKey()));
        form().btnSampleOffset->setEnabled(hasFile && isEditable(QStringLiteral("sampleOffsetEditable")));
        form().btnSamplesToUse->setEnabled(hasFile && isEditable(QStringLiteral("samplesToUseEditable")));
        form().btnPeriod->setEnabled(hasFile && isEditable(QStringLiteral("periodEditable")));

        const quint64 samples = wholeCount(profile().value(QLatin1String("samplesInFile")));
        form().btnSamplesInFile->setLabelText(QString::number(samples));
        form().btnSignalLen->setLabelText(duration(QStringLiteral("SamplesToUse")));
        form().btnPeriodLen->setLabelText(duration(QStringLiteral("Period")));
    }

    [[nodiscard]] bool isSwitchOn(const QString& key) const override
    {
        if (key != autoScaleKey())
            return FormPanel::isSwitchOn(key);
        const QJsonValue value = editorState().value(key);
        return isAutoScaleLocked() || value.toBool() || value.toDouble() != 0;
    }

private:
    [[nodiscard]] bool isAutoScaleLocked() const
    {
        return profile().value(QLatin1String("autoScaleLocked")).toBool();
    }
    [[nodiscard]] bool isEditable(const QString& flag) const { return profile().value(flag).toBool(true); }

    // Of so many samples as the key of the state says.
    [[nodiscard]] QString duration(const QString& key) const
    {
        return durationText(wholeCount(editorState().value(key)), number(QStringLiteral("SampleRate")));
    }

    void load()
    {
        const QPointer<RemoteArbPanel> self(this);
        const QString file =
            chooseWavFile(tr("Select %1 file").arg(QLatin1String("WAV/ARB")), tr("WAV Files (*.wav)"), this);
        if (self && !file.isEmpty())
            setField(fileNameKey(), file);
        if (self)
            form().btnLoad->setChecked(false);
    }
};

} // namespace

RemoteModEditor* createArbPanel(QWidget* parent)
{
    return new RemoteArbPanel(parent);
}
