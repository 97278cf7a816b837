-- One application process that was recorded, once each, however often it is combined.
CREATE TABLE run (
    id             INTEGER PRIMARY KEY,
    uuid           TEXT    NOT NULL UNIQUE, -- the same wherever the run is kept
    session        TEXT    NOT NULL, -- UUID of the "uicov run" that started it; empty for none
    application    TEXT    NOT NULL, -- QCoreApplication::applicationName()
    executable     TEXT    NOT NULL, -- path on the machine that recorded
    qt_version     TEXT    NOT NULL,
    platform       TEXT    NOT NULL, -- QGuiApplication::platformName()
    locale         TEXT    NOT NULL,
    architecture   TEXT    NOT NULL, -- QSysInfo::buildAbi()
    started        TEXT    NOT NULL, -- ISO 8601, UTC
    is_complete    INTEGER NOT NULL, -- 0: something that was sent is, or may be, missing
    partial_reason TEXT    NOT NULL, -- what happened to a partial run; empty for a complete one
    bytes_lost     INTEGER NOT NULL, -- at the end of the recording
    messages       INTEGER NOT NULL, -- that carried a record
    messages_lost  INTEGER NOT NULL, -- of those: could not be used
    digest         BLOB    NOT NULL, -- SHA-256 of the run; tells which of two forms of it is kept
    extension      TEXT    NOT NULL DEFAULT '' -- libraries that made it, comma separated; empty: classic
);

-- What the user called the run by: --label NAME=VALUE.
CREATE TABLE label (
    run   INTEGER NOT NULL REFERENCES run (id) ON DELETE CASCADE,
    name  TEXT    NOT NULL,
    value TEXT    NOT NULL,
    PRIMARY KEY (run, name)
) WITHOUT ROWID;

-- The parts of a run, as tests, in the order in which they first began. Number 0 is the run itself.
CREATE TABLE context (
    run    INTEGER NOT NULL REFERENCES run (id) ON DELETE CASCADE,
    number INTEGER NOT NULL,
    name   TEXT    NOT NULL,
    PRIMARY KEY (run, number)
) WITHOUT ROWID;

-- What was warned about while recording, equal lines folded.
CREATE TABLE warning (
    run   INTEGER NOT NULL REFERENCES run (id) ON DELETE CASCADE,
    line  TEXT    NOT NULL,
    count INTEGER NOT NULL,
    PRIMARY KEY (run, line)
) WITHOUT ROWID;

-- Texts that elements share, each once. The views below put them in their places.
CREATE TABLE text (
    id    INTEGER PRIMARY KEY,
    value TEXT    NOT NULL UNIQUE
);

-- Pictures, each once.
CREATE TABLE picture (
    id   INTEGER PRIMARY KEY,
    hash BLOB    NOT NULL UNIQUE, -- SHA-256 of png
    png  BLOB    NOT NULL
);

-- One element as it was at the end of its run.
CREATE TABLE element (
    run                 INTEGER NOT NULL REFERENCES run (id) ON DELETE CASCADE,
    number              INTEGER NOT NULL, -- from 0, in the order in which they were announced
    id                  TEXT    NOT NULL, -- as the application named it; another in each run
    parent              INTEGER, -- number of the element that listed it first; NULL for a root
    position            INTEGER NOT NULL, -- among the children of its parent, from 0
    class               INTEGER NOT NULL REFERENCES text (id),
    type                INTEGER REFERENCES text (id), -- standard type; NULL for none
    text                INTEGER REFERENCES text (id), -- NULL where it never had one
    transparent_node    INTEGER NOT NULL, -- 1: structure, not for people
    transparent_subgraph INTEGER NOT NULL, -- 1: what is below it does not count
    window_node         INTEGER NOT NULL, -- 1: a window of its own
    events              INTEGER NOT NULL REFERENCES text (id), -- announced: JSON array of names
    key                 INTEGER REFERENCES text (id), -- its name across runs; NULL for structure
    structure_key       INTEGER REFERENCES text (id), -- the same without captions
    x                   INTEGER, -- pixels, in the coordinates of its toolkit; NULL if never told
    y                   INTEGER,
    width               INTEGER,
    height              INTEGER,
    picture             INTEGER REFERENCES picture (id), -- the last one; NULL for none
    attributes          INTEGER REFERENCES text (id), -- JSON object, name to text; NULL for none
    was_enabled         INTEGER NOT NULL DEFAULT 1, -- 0: a control that never was
    was_seen            INTEGER NOT NULL DEFAULT 0, -- 1: a control that a person could have operated
    PRIMARY KEY (run, number)
) WITHOUT ROWID;

-- Elements that are listed by others than their parent.
CREATE TABLE further_parent (
    run      INTEGER NOT NULL REFERENCES run (id) ON DELETE CASCADE,
    parent   INTEGER NOT NULL, -- number of the element that lists it
    position INTEGER NOT NULL, -- among the children of that parent, from 0
    element  INTEGER NOT NULL,
    PRIMARY KEY (run, parent, position)
) WITHOUT ROWID;

-- How often an event of an element happened in a context. Only what happened has a row.
CREATE TABLE hit (
    run     INTEGER NOT NULL REFERENCES run (id) ON DELETE CASCADE,
    element INTEGER NOT NULL,
    event   INTEGER NOT NULL REFERENCES text (id),
    context INTEGER NOT NULL, -- number among the run's contexts
    count   INTEGER NOT NULL,
    first   INTEGER, -- milliseconds since the recording began; NULL where that was not recorded
    last    INTEGER,
    PRIMARY KEY (run, element, event, context)
) WITHOUT ROWID;

-- Elements with their texts, for people.
CREATE VIEW elements AS
SELECT run.uuid AS run, run.application, element.number, element.parent, type.value AS type,
       class.value AS class, caption.value AS text, key.value AS key,
       structure.value AS structure_key, events.value AS events, x, y, width, height
FROM element
JOIN run ON run.id = element.run
JOIN text AS class ON class.id = element.class
JOIN text AS events ON events.id = element.events
LEFT JOIN text AS type ON type.id = element.type
LEFT JOIN text AS caption ON caption.id = element.text
LEFT JOIN text AS key ON key.id = element.key
LEFT JOIN text AS structure ON structure.id = element.structure_key;

-- What happened, with all names, for people.
CREATE VIEW hits AS
SELECT run.uuid AS run, run.application, key.value AS key, event.value AS event,
       context.name AS context, hit.count
FROM hit
JOIN run ON run.id = hit.run
JOIN element ON element.run = hit.run AND element.number = hit.element
JOIN text AS event ON event.id = hit.event
JOIN context ON context.run = hit.run AND context.number = hit.context
LEFT JOIN text AS key ON key.id = element.key;
