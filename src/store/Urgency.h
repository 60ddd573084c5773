#pragma once

/// Which operations of the database thread go first: those that a person waits for are served before all
/// others.
enum class Urgency { PersonWaits, Background };
