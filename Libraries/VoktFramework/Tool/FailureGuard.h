#pragma once

#include <VoktFramework/Errors/VoktError.h>

#include <exception>

/// Runs a step of the tool. What it throws comes out as a VoktError: one as it is, everything else
/// under the step's id, with a standard exception's text as cause.
template <class Step>
void GuardStep(VoktErrorId id, Step step) {
    try {
        step();
    } catch (const VoktError&) {
        throw;
    } catch (const std::exception& failure) {
        throw VoktError(id, failure.what());
    } catch (...) {
        throw VoktError(id);
    }
}

/// The same for the work itself, where failures of the libraries keep their message, position and
/// cause object.
template <class Step>
void GuardProcessing(VoktErrorId id, Step step) {
    GuardStep(id, [&step] {
        try {
            step();
        } catch (const VoktError&) {
            throw;
        } catch (const VokException& failure) {
            throw VoktError(failure, VoktErrorId::SceneFailure);
        } catch (const QelTools::Common::Exception& failure) {
            throw VoktError(failure, VoktErrorId::InternalFailure);
        }
    });
}
