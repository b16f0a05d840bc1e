#include "services/transcription/WhisperService.h"

#include "platform/ApplicationBundle.h"
#include "services/transcription/AudioStats.h"
#include "services/transcription/TemporaryWavFile.h"
#include "services/transcription/WavFormat.h"
#include "services/transcription/WhisperCommand.h"
#include "services/transcription/WhisperError.h"
#include "services/transcription/WhisperLog.h"
#include "services/transcription/WhisperOutput.h"
#include "support/Text.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr float quietestPeak = 0.001F;
constexpr float quietestRms = 0.0001F;

bool isExecutableFile(const QString& path) {
    const QFileInfo file(path);
    return file.isFile() && file.isExecutable();
}

} // namespace

WhisperService::WhisperService(const ApplicationBundle& bundle, ProcessRunner& processRunner,
                               Scheduler& scheduler)
    : WhisperService(bundle, processRunner, scheduler, EngineLocations::standard(bundle)) {}

WhisperService::WhisperService(const ApplicationBundle& bundle, ProcessRunner& processRunner,
                               Scheduler& scheduler, EngineLocations locations)
    : m_bundle(bundle)
    , m_processRunner(processRunner)
    , m_scheduler(scheduler)
    , m_locations(std::move(locations)) {}

Task<> WhisperService::loadModel() {
    if (m_isLoading) {
        qCCritical(whisperLog, "loadModel called while already loading");
        co_return;
    }
    m_isLoading = true;
    m_isModelLoaded = false;
    m_simulationMode = false;
    qCInfo(whisperLog, "Searching for whisper-cpp binary and model...");

    const QPointer<WhisperService> self(this);
    std::optional<QString> binary = co_await findBinary();
    if (!self) {
        co_return;
    }
    m_binaryPath = std::move(binary);
    if (m_binaryPath) {
        qCInfo(whisperLog, "Found whisper-cpp binary: %s", qUtf8Printable(*m_binaryPath));
    } else {
        qCCritical(whisperLog, "whisper-cpp binary not found — will use simulation mode");
    }
    m_modelPath = findModel();
    if (m_modelPath) {
        qCInfo(whisperLog, "Found whisper model: %s", qUtf8Printable(*m_modelPath));
    } else {
        qCCritical(whisperLog, "No whisper model found — will use simulation mode");
    }

    if (m_binaryPath && m_modelPath) {
        m_isModelLoaded = true;
        qCInfo(whisperLog, "WhisperService ready (binary + model)");
    } else {
        // Deliberately no failure: the program runs, and each take says what to install.
        m_simulationMode = true;
        m_isModelLoaded = true;
        qCInfo(whisperLog, "WhisperService ready (simulation mode)");
    }
    m_isLoading = false;
}

Task<> WhisperService::loadSpecificModel(QString path) {
    m_isLoading = true;
    if (!m_binaryPath) {
        const QPointer<WhisperService> self(this);
        std::optional<QString> binary = co_await findBinary();
        if (!self) {
            co_return;
        }
        m_binaryPath = std::move(binary);
    }
    if (QFileInfo::exists(path)) {
        m_modelPath = path;
        m_simulationMode = !m_binaryPath;
        m_isModelLoaded = true;
        qCInfo(whisperLog, "Loaded specific model: %s", qUtf8Printable(path));
    } else {
        qCCritical(whisperLog, "Model not found at: %s", qUtf8Printable(path));
        // Deliberately no way back to the model that was loaded before, though its path stays.
        m_simulationMode = true;
        m_isModelLoaded = true;
    }
    m_isLoading = false;
}

Task<std::optional<QString>> WhisperService::findBinary() {
    for (const QString& path : m_locations.binaries) {
        const bool isFound = isExecutableFile(path);
        qCInfo(whisperLog, "Binary check: %s → %s", qUtf8Printable(path),
               isFound ? "FOUND" : "not found");
        if (isFound) {
            co_return path;
        }
    }
    try {
        // This name alone, on purpose: "whisper-cli" is found by the table only.
        const QStringList arguments{u"whisper-cpp"_s};
        const QString output = co_await runProcess(u"/usr/bin/which"_s, arguments);
        const QString path = text::trimmed(output);
        if (isExecutableFile(path)) {
            co_return path;
        }
    } catch (const std::exception& error) {
        qCCritical(whisperLog, "'which whisper-cpp' failed: %s", error.what());
    }
    co_return std::nullopt;
}

std::optional<QString> WhisperService::findModel() const {
    for (const QString& directory : m_locations.modelDirectories) {
        const bool exists = QFileInfo::exists(directory);
        qCInfo(whisperLog, "Model dir: %s → %s", qUtf8Printable(directory),
               exists ? "exists" : "missing");
        if (!exists) {
            continue;
        }
        for (const QString& name : WhisperConstants::modelFilenames()) {
            const QString path = QDir(directory).filePath(name);
            if (QFileInfo::exists(path)) {
                qCInfo(whisperLog, "Model found: %s", qUtf8Printable(path));
                return path;
            }
        }
    }
    qCCritical(whisperLog, "No model file found in any search path");
    return std::nullopt;
}

Task<std::optional<QString>> WhisperService::transcribe(std::vector<float> samples) {
    if (!m_isModelLoaded) {
        qCCritical(whisperLog, "transcribe called before model is loaded");
        co_return std::nullopt;
    }
    if (samples.empty()) {
        qCDebug(whisperLog, "transcribe called with empty samples");
        co_return std::nullopt;
    }
    const AudioStats stats = audioStats(samples);
    qCInfo(whisperLog, "Audio stats: samples=%zu, duration=%.2fs, peak=%.6f, rms=%.6f",
           samples.size(), static_cast<double>(samples.size()) / wavSampleRate,
           static_cast<double>(stats.peak), static_cast<double>(stats.rms));
    if (stats.peak < quietestPeak || stats.rms < quietestRms) {
        qCInfo(whisperLog, "Audio too quiet, skipping transcription");
        co_return std::nullopt;
    }

    const QPointer<WhisperService> self(this);
    m_isTranscribing = true;
    std::optional<QString> text;
    if (m_simulationMode) {
        text = co_await simulateTranscription();
    } else {
        text = co_await transcribeViaCLI(std::move(samples));
    }
    if (self) {
        m_isTranscribing = false;
    }
    co_return text;
}

Task<std::optional<QString>> WhisperService::transcribeViaCLI(std::vector<float> samples) {
    if (!m_binaryPath || !m_modelPath) {
        qCCritical(whisperLog, "Binary or model path missing for CLI transcription");
        std::optional<QString> hint = co_await simulateTranscription();
        co_return hint;
    }
    std::optional<TemporaryWavFile> wav;
    try {
        wav.emplace(m_bundle.temporaryDirectory(), createWAVData(samples));
    } catch (const FileWriteError& error) {
        qCCritical(whisperLog, "Failed to write WAV file: %s", error.what());
        co_return std::nullopt;
    }
    qCDebug(whisperLog, "Wrote %zu samples to %s", samples.size(), qUtf8Printable(wav->path()));

    const QStringList arguments =
        commandLineArguments({.modelPath = *m_modelPath,
                              .wavPath = wav->path(),
                              .language = language,
                              .translateToEnglish = translateToEnglish,
                              .processorCount = m_bundle.processorCount()});
    qCInfo(whisperLog, "Running whisper-cpp: %s %s", qUtf8Printable(*m_binaryPath),
           qUtf8Printable(arguments.join(u' ')));
    std::optional<QString> text;
    try {
        // From here on this object may be gone: only locals.
        const QString output = co_await runProcess(*m_binaryPath, arguments);
        text = parseWhisperOutput(output);
    } catch (const std::exception& error) {
        qCCritical(whisperLog, "whisper-cpp failed: %s", error.what());
        co_return std::nullopt;
    }
    if (text) {
        qCInfo(whisperLog, "Transcription result: \"%s\"", qUtf8Printable(*text));
    } else {
        qCInfo(whisperLog, "Transcription produced no usable text");
    }
    co_return text;
}

Task<std::optional<QString>> WhisperService::simulateTranscription() {
    qCInfo(whisperLog, "Simulation mode: no whisper-cpp binary or model found");
    co_await m_scheduler.sleep(500ms);
    co_return u"[No whisper-cpp] Install: "_s + WhisperConstants::installCommand();
}

Task<QString> WhisperService::runProcess(QString program, QStringList arguments) {
    const QPointer<WhisperService> self(this);
    Scheduler& scheduler = m_scheduler;
    // `this` may be gone after the await.
    const ProcessResult result = co_await m_processRunner.run(program, arguments);
    const QString errors = text::fromUtf8(result.standardError).value_or(QString());
    if (result.exitStatus != 0) {
        throw WhisperError(WhisperError::Case::processFailure,
                           u"whisper-cpp exited with status %1: %2"_s.arg(
                               QString::number(result.exitStatus), errors));
    }
    if (!errors.isEmpty()) {
        scheduler.post([self, errors] {
            if (self) {
                qCDebug(whisperLog, "whisper-cpp stderr: %s", qUtf8Printable(errors));
            }
        });
    }
    co_return text::fromUtf8(result.standardOutput).value_or(QString());
}

} // namespace quorvin
