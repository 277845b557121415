#pragma once

#include "link/LatinWord.h"

// The vocabulary of the link: every JSON key and every word inside the JSON is spelt here and nowhere else. A
// constant is named as its word; where the word is no C++ name, an underscore stands for the odd character.
// The words that begin a line are in MessageType.cpp.
namespace MinibarHelperProtocol {
namespace Keys {

// Envelopes of requests, responses and events.
inline constexpr QLatin1String v = latinWord("v");
inline constexpr QLatin1String id = latinWord("id");
inline constexpr QLatin1String cmd = latinWord("cmd");
inline constexpr QLatin1String args = latinWord("args");
inline constexpr QLatin1String ok = latinWord("ok");
inline constexpr QLatin1String error = latinWord("error");
inline constexpr QLatin1String code = latinWord("code");
inline constexpr QLatin1String message = latinWord("message");
inline constexpr QLatin1String payload = latinWord("payload");
inline constexpr QLatin1String event = latinWord("event");

// Arguments of the quick controls.
inline constexpr QLatin1String enabled = latinWord("enabled");
inline constexpr QLatin1String hz = latinWord("hz");
inline constexpr QLatin1String dbm = latinWord("dbm");

// Snapshot.
inline constexpr QLatin1String seq = latinWord("seq");
inline constexpr QLatin1String tx = latinWord("tx");
inline constexpr QLatin1String sweep = latinWord("sweep");
inline constexpr QLatin1String mod = latinWord("mod");

// Snapshot, "tx".
inline constexpr QLatin1String rf = latinWord("rf");
inline constexpr QLatin1String centerHz = latinWord("centerHz");
inline constexpr QLatin1String centerText = latinWord("centerText");
inline constexpr QLatin1String centerUnit = latinWord("centerUnit");
inline constexpr QLatin1String levelDbm = latinWord("levelDbm");
inline constexpr QLatin1String levelText = latinWord("levelText");
inline constexpr QLatin1String levelUnit = latinWord("levelUnit");

// Snapshot, "mod". The elements of "businesses" begin with "id".
inline constexpr QLatin1String enabledBusinessId = latinWord("enabledBusinessId");
inline constexpr QLatin1String businesses = latinWord("businesses");
inline constexpr QLatin1String name = latinWord("name");
inline constexpr QLatin1String text = latinWord("text");
inline constexpr QLatin1String profile = latinWord("profile");
inline constexpr QLatin1String editorKind = latinWord("editorKind");
inline constexpr QLatin1String editorState = latinWord("editorState");
inline constexpr QLatin1String revision = latinWord("revision");

// Snapshot, "sweep", and the sweep request.
inline constexpr QLatin1String available = latinWord("available");
inline constexpr QLatin1String selectedPlanId = latinWord("selectedPlanId");
inline constexpr QLatin1String frequencyPlan = latinWord("frequencyPlan");
inline constexpr QLatin1String startHz = latinWord("startHz");
inline constexpr QLatin1String stopHz = latinWord("stopHz");
inline constexpr QLatin1String stepHz = latinWord("stepHz");
inline constexpr QLatin1String levelPlan = latinWord("levelPlan");
inline constexpr QLatin1String startDbm = latinWord("startDbm");
inline constexpr QLatin1String stopDbm = latinWord("stopDbm");
inline constexpr QLatin1String stepDb = latinWord("stepDb");
inline constexpr QLatin1String dwellSeconds = latinWord("dwellSeconds");
inline constexpr QLatin1String supportedPlanIds = latinWord("supportedPlanIds");

// Change requests.
inline constexpr QLatin1String expectedRevision = latinWord("expectedRevision");
inline constexpr QLatin1String businessId = latinWord("businessId");
inline constexpr QLatin1String action = latinWord("action");

// Arguments of the actions.
inline constexpr QLatin1String key = latinWord("key");
inline constexpr QLatin1String value = latinWord("value");

} // namespace Keys

namespace Commands {
inline constexpr QLatin1String OUTP_STAT = latinWord("OUTP:STAT");
inline constexpr QLatin1String SOUR_FREQ_CENT = latinWord("SOUR:FREQ:CENT");
inline constexpr QLatin1String SOUR_POW_LEV = latinWord("SOUR:POW:LEV");
inline constexpr QLatin1String SOUR_SWEEP_CONF = latinWord("SOUR:SWEEP:CONF");
inline constexpr QLatin1String SOUR_MOD_CONF = latinWord("SOUR:MOD:CONF");
inline constexpr QLatin1String STAT_SNAP_ =
    latinWord("STAT:SNAP?"); // asks for a snapshot; the helper never does
} // namespace Commands

namespace Events {
inline constexpr QLatin1String STAT_SNAP = latinWord("STAT:SNAP");
} // namespace Events

namespace Errors {
inline constexpr QLatin1String NOT_OPEN = latinWord("NOT_OPEN");
inline constexpr QLatin1String INVALID_ARG = latinWord("INVALID_ARG");
inline constexpr QLatin1String NOT_SUPPORTED = latinWord("NOT_SUPPORTED");
inline constexpr QLatin1String INTERNAL_ERROR = latinWord("INTERNAL_ERROR");
inline constexpr QLatin1String CONFLICT = latinWord("CONFLICT");
inline constexpr QLatin1String TIMEOUT = latinWord("TIMEOUT");                 // made by the helper itself
inline constexpr QLatin1String TRANSPORT_ERROR = latinWord("TRANSPORT_ERROR"); // made by the helper itself
} // namespace Errors

// What a modulation request asks of an editor.
namespace Actions {
inline constexpr QLatin1String set_field = latinWord("set-field");
inline constexpr QLatin1String set_default_trim = latinWord("set-default-trim");
inline constexpr QLatin1String set_discrete_mode = latinWord("set-discrete-mode");
inline constexpr QLatin1String set_enabled_tones = latinWord("set-enabled-tones");
inline constexpr QLatin1String select_file = latinWord("select-file");
inline constexpr QLatin1String clear_file = latinWord("clear-file"); // no editor of the helper sends it
} // namespace Actions

namespace Plans {
inline constexpr QLatin1String fscan = latinWord("fscan");
inline constexpr QLatin1String lscan = latinWord("lscan");
inline constexpr QLatin1String unsupported = latinWord("unsupported");
} // namespace Plans
} // namespace MinibarHelperProtocol
