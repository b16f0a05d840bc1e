#pragma once

#include "platform/ProcessRunner.h"
#include "platform/Scheduler.h"
#include "services/transcription/WhisperConstants.h"
#include "support/Task.h"

#include <QObject>
#include <QProperty>
#include <QString>

#include <optional>
#include <vector>

namespace quorvin {

class ApplicationBundle;

/// Speech to text by one run of the whisper-cpp command-line program per take. Without that program
/// or a model file for it, it simulates: every take then gives the install hint as its text, and
/// that counts as loaded. Main thread only. Nothing throws; failures go to the log.
class WhisperService final : public QObject {
    Q_OBJECT
    /// Takes can be transcribed.
    Q_PROPERTY(bool isModelLoaded READ isModelLoaded NOTIFY isModelLoadedChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool isTranscribing READ isTranscribing NOTIFY isTranscribingChanged)

public:
    WhisperService(const ApplicationBundle& bundle, ProcessRunner& processRunner,
                   Scheduler& scheduler);
    WhisperService(const ApplicationBundle& bundle, ProcessRunner& processRunner,
                   Scheduler& scheduler, EngineLocations locations);

    [[nodiscard]] bool isModelLoaded() const { return m_isModelLoaded; }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] bool isTranscribing() const { return m_isTranscribing; }
    [[nodiscard]] const std::optional<QString>& binaryPath() const { return m_binaryPath; }
    [[nodiscard]] const std::optional<QString>& modelPath() const { return m_modelPath; }
    [[nodiscard]] bool simulationMode() const { return m_simulationMode; }

    /// For the next run; one of WhisperConstants::supportedLanguages, others count as "auto".
    QString language = QStringLiteral("auto");
    /// For the next run.
    bool translateToEnglish = false;

    /// Looks for the program and a model anew. Refused while a load is under way.
    Task<> loadModel();

    /// Takes the model file at `path`, looking for the program only if none is known yet. It does
    /// not wait for a load under way: of two, the one that ends last stands.
    Task<> loadSpecificModel(QString path);

    /// The text of one take of 16 kHz mono samples; absent when it holds no usable speech or when
    /// the run fails. Takes may overlap. There is no time limit, and no way to end a run.
    [[nodiscard]] Task<std::optional<QString>> transcribe(std::vector<float> samples);

Q_SIGNALS:
    void isModelLoadedChanged();
    void isLoadingChanged();
    void isTranscribingChanged();

private:
    [[nodiscard]] Task<std::optional<QString>> findBinary();
    [[nodiscard]] std::optional<QString> findModel() const;
    [[nodiscard]] Task<std::optional<QString>> transcribeViaCLI(std::vector<float> samples);
    [[nodiscard]] Task<std::optional<QString>> simulateTranscription();
    /// The child's standard output, empty when it isn't UTF-8. Throws WhisperError or
    /// ProcessLaunchError.
    [[nodiscard]] Task<QString> runProcess(QString program, QStringList arguments);

    const ApplicationBundle& m_bundle;
    ProcessRunner& m_processRunner;
    Scheduler& m_scheduler;
    const EngineLocations m_locations;

    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(WhisperService, bool, m_isModelLoaded, false,
                                         &WhisperService::isModelLoadedChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(WhisperService, bool, m_isLoading, false,
                                         &WhisperService::isLoadingChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(WhisperService, bool, m_isTranscribing, false,
                                         &WhisperService::isTranscribingChanged)
    std::optional<QString> m_binaryPath;
    std::optional<QString> m_modelPath;
    bool m_simulationMode = false;
};

} // namespace quorvin
