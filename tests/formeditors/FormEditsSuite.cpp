#include "formeditors/FormFixture.h"

// An edit leaves once and the control shows what is confirmed.
class FormEditsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void enableSwitchAsksOnceAndGoesBack_data() { addKinds(); }
    void enableSwitchAsksOnceAndGoesBack();
    void choiceAsksOnceAndGoesBack_data();
    void choiceAsksOnceAndGoesBack();
    void unknownChoiceComesBackAsText();
    void switchAsksOnceAndGoesBack_data();
    void switchAsksOnceAndGoesBack();
    void confirmationWithinTheEditStays();
    void edit_data();
    void editorMayGoDuringAnEdit_data() { edit_data(); }
    void editorMayGoDuringAnEdit();
};

void FormEditsSuite::enableSwitchAsksOnceAndGoesBack()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    QVERIFY(fixture.show());
    SwitchButton* const enabled = fixture.onOff("enabled");
    for (bool confirmed : {false, true}) {
        fixture.apply(expectedForm(kind).editableState, "{}", confirmed);
        fixture.forget();
        QVector<bool> told;
        const auto connection = connect(fixture.editor, &RemoteModEditor::enabledEdited, this,
                                        [&] { told.append(fixture.editor->isModulationEnabled()); });
        FormFixture::toggle(enabled);
        disconnect(connection);
        QCOMPARE(told, QVector<bool>{!confirmed}); // what is wanted, while it is asked for
        QCOMPARE(fixture.editor->isModulationEnabled(), confirmed);
        QCOMPARE(fixture.enabledEdits->count(), 1);
        QCOMPARE(fixture.actions->count(), 0);
    }
}

void FormEditsSuite::choiceAsksOnceAndGoesBack_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("button");
    for (const ExpectedForm& form : expectedForms()) {
        for (const ExpectedChoice& choice : form.choices)
            QTest::addRow("%s %s", form.kind, choice.button)
                << QString::fromLatin1(form.kind) << QString::fromLatin1(choice.button);
    }
}

void FormEditsSuite::choiceAsksOnceAndGoesBack()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, button);
    FormFixture fixture(kind);
    const ExpectedForm& form = expectedForm(kind);
    const auto choice = std::find_if(form.choices.cbegin(), form.choices.cend(), [&](const auto& entry) {
        return button == QLatin1String(entry.button);
    });
    const QJsonArray values = QJsonDocument::fromJson(choice->values).array();
    fixture.editor->applyEditorState({{QLatin1String(choice->key), values.at(1)}}, {}, false);
    QVERIFY(fixture.show());
    EnumTextButton* const picker = fixture.choice(choice->button);
    if (button == QLatin1String("btnModulationType") && kind == QLatin1String("dsss")) {
        QVERIFY(!picker->isEnabled()); // it only shows
        QTest::mouseClick(picker, Qt::LeftButton);
        QVERIFY(!picker->isListOpen());
        picker->setEnabled(true);
    }
    for (int item = 0; item < values.size(); ++item) {
        fixture.forget();
        QVERIFY(FormFixture::pick(picker, item));
        const QJsonObject edit = fixture.setField();
        QCOMPARE(edit.value(QLatin1String("key")).toString(), QString::fromLatin1(choice->key));
        QCOMPARE(edit.value(QLatin1String("value")), values.at(item));
        QCOMPARE(picker->currentEnum(), 1);
        QCOMPARE(picker->labelText(), choice->texts.at(1));
    }
}

void FormEditsSuite::unknownChoiceComesBackAsText()
{
    FormFixture fixture("am");
    fixture.apply(R"({"Shape":"Noise"})");
    QVERIFY(fixture.show());
    QVERIFY(FormFixture::pick(fixture.choice("btnShape"), 2));
    QCOMPARE(fixture.setField().value(QLatin1String("value")).toString(), QStringLiteral("Triangle"));
    QCOMPARE(fixture.shown("btnShape"), QStringLiteral("Noise"));
    QCOMPARE(fixture.choice("btnShape")->currentEnum(), -1);
}

void FormEditsSuite::switchAsksOnceAndGoesBack_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("confirmed");
    for (const ExpectedSwitch& onOff : expectedForm(QStringLiteral("ofdm")).switches) {
        for (bool confirmed : {false, true})
            QTest::addRow("%s %s", onOff.key, confirmed ? "on" : "off")
                << QString::fromLatin1(onOff.button) << QString::fromLatin1(onOff.key) << confirmed;
    }
}

void FormEditsSuite::switchAsksOnceAndGoesBack()
{
    QFETCH(const QString, button);
    QFETCH(const QString, key);
    QFETCH(const bool, confirmed);
    FormFixture fixture("ofdm");
    fixture.editor->applyEditorState({{key, confirmed}}, {}, false);
    QVERIFY(fixture.show());
    SwitchButton* const onOff = fixture.onOff(button.toLatin1().constData());
    FormFixture::toggle(onOff);
    const QJsonObject edit = fixture.setField();
    QCOMPARE(edit.value(QLatin1String("key")).toString(), key);
    QCOMPARE(edit.value(QLatin1String("value")), QJsonValue(!confirmed));
    QCOMPARE(onOff->status(), confirmed);
}

// A main process that answers at once is not overruled by what was confirmed before.
void FormEditsSuite::confirmationWithinTheEditStays()
{
    FormFixture fixture("ofdm");
    fixture.apply(R"({"NullDC":false,"FFTSize":16})");
    QVERIFY(fixture.show());
    connect(fixture.editor, &RemoteModEditor::actionEdited, this,
            [&] { fixture.apply(R"({"NullDC":true,"FFTSize":64})", "{}", true); });
    connect(fixture.editor, &RemoteModEditor::enabledEdited, this,
            [&] { fixture.apply(R"({"NullDC":true,"FFTSize":32})", "{}", true); });
    FormFixture::toggle(fixture.onOff("enabled"));
    QVERIFY(fixture.editor->isModulationEnabled());
    QCOMPARE(fixture.shown("btnFFTSize"), QStringLiteral("32"));
    fixture.apply(R"({"NullDC":false,"FFTSize":16})");
    FormFixture::toggle(fixture.onOff("btnNullDC"));
    QVERIFY(fixture.onOff("btnNullDC")->status());
    QVERIFY(FormFixture::pick(fixture.choice("btnFFTSize"), 0));
    QCOMPARE(fixture.shown("btnFFTSize"), QStringLiteral("64"));
    QCOMPARE(fixture.emitted(), 3);
}

void FormEditsSuite::edit_data()
{
    QTest::addColumn<QString>("edit");
    for (const char* edit : {"enable", "switch", "choice", "number"})
        QTest::newRow(edit) << QString::fromLatin1(edit);
}

void FormEditsSuite::editorMayGoDuringAnEdit()
{
    QFETCH(const QString, edit);
    FormFixture fixture("ofdm");
    QVERIFY(fixture.show());
    const auto remove = [&fixture] { delete fixture.editor; };
    connect(fixture.editor, &RemoteModEditor::actionEdited, this, remove);
    connect(fixture.editor, &RemoteModEditor::enabledEdited, this, remove);
    if (edit == QLatin1String("enable")) {
        FormFixture::toggle(fixture.onOff("enabled"));
    } else if (edit == QLatin1String("switch")) {
        FormFixture::toggle(fixture.onOff("btnWindowed"));
    } else if (edit == QLatin1String("choice")) {
        const QPointer<EnumTextButton> picker = fixture.choice("btnFFTSize");
        QTest::mouseClick(picker, Qt::LeftButton);
        const QPointer<Controls::EnumList> list = fixture.window.findChild<Controls::EnumList*>();
        QVERIFY(list);
        list->setCurrentIndex(list->model()->index(3, 0));
        QTest::keyClick(list, Qt::Key_Return);
    } else {
        fixture.editor->applyNumericValue(QStringLiteral("SampleRate"), 1e6);
    }
    QVERIFY(!fixture.editor);
    QCOMPARE(fixture.emitted(), 1);
    QCoreApplication::processEvents(); // what was left to do for what is gone
}

std::unique_ptr<QObject> makeFormEditsSuite()
{
    return std::make_unique<FormEditsSuite>();
}

#include "FormEditsSuite.moc"
