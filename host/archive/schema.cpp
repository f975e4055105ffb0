// The archive's schema, as a list of forward migrations. user_version holds
// the number of migrations applied; a migration is never edited once shipped,
// a change is a new step at the end.
//
// Conventions: keys are opaque text (GUID form); dates are "YYYYMMDD" and
// date-times "YYYYMMDDHHMMSS", empty when unknown; flags are 0/1 integers.
#include "schema.h"

namespace {

const char* const kV1 = R"SQL(
CREATE TABLE organizations (
  org_key TEXT PRIMARY KEY,
  org_id TEXT NOT NULL UNIQUE COLLATE NOCASE,
  name TEXT NOT NULL DEFAULT '',
  is_enterprise INTEGER NOT NULL DEFAULT 0,
  is_federated INTEGER NOT NULL DEFAULT 0,
  accepts_demographics_update INTEGER NOT NULL DEFAULT 1,
  generates_mrn INTEGER NOT NULL DEFAULT 1,
  generates_acc INTEGER NOT NULL DEFAULT 1,
  default_country TEXT NOT NULL DEFAULT '',
  default_state TEXT NOT NULL DEFAULT '',
  new_exam_status TEXT NOT NULL DEFAULT '',
  mrn_prefix TEXT NOT NULL DEFAULT '',
  acc_prefix TEXT NOT NULL DEFAULT '',
  mrn_counter INTEGER NOT NULL DEFAULT 0,
  acc_counter INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE users (
  user_name TEXT PRIMARY KEY COLLATE NOCASE,
  full_name TEXT NOT NULL DEFAULT '',
  is_default INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE user_rights (
  user_name TEXT NOT NULL REFERENCES users(user_name) ON DELETE CASCADE,
  org_key TEXT NOT NULL REFERENCES organizations(org_key) ON DELETE CASCADE,
  can_create INTEGER NOT NULL DEFAULT 0,
  can_link INTEGER NOT NULL DEFAULT 0,
  can_merge INTEGER NOT NULL DEFAULT 0,
  PRIMARY KEY (user_name, org_key)
);

-- Site options, product switches and site policy: scope 'option', 'product', 'policy'.
CREATE TABLE site_settings (
  scope TEXT NOT NULL,
  name TEXT NOT NULL,
  value TEXT NOT NULL DEFAULT '',
  PRIMARY KEY (scope, name)
);

CREATE TABLE preferences (
  user_name TEXT NOT NULL,
  name TEXT NOT NULL,
  value TEXT NOT NULL DEFAULT '',
  PRIMARY KEY (user_name, name)
);

-- One coded value. `parent_code` is the country of a state; `org_key` empty
-- for site-wide values; `rank` orders priorities.
CREATE TABLE dictionary (
  topic INTEGER NOT NULL,
  code TEXT NOT NULL,
  description TEXT NOT NULL DEFAULT '',
  parent_code TEXT NOT NULL DEFAULT '',
  org_key TEXT NOT NULL DEFAULT '',
  rank INTEGER NOT NULL DEFAULT 0,
  sort_order INTEGER NOT NULL DEFAULT 0,
  PRIMARY KEY (topic, parent_code, org_key, code)
);

CREATE TABLE link_groups (
  group_key TEXT PRIMARY KEY,
  created TEXT NOT NULL DEFAULT ''
);

CREATE TABLE patients (
  patient_key TEXT PRIMARY KEY,
  org_key TEXT NOT NULL REFERENCES organizations(org_key),
  mrn TEXT NOT NULL,
  last_name TEXT NOT NULL DEFAULT '',
  first_name TEXT NOT NULL DEFAULT '',
  middle_name TEXT NOT NULL DEFAULT '',
  title TEXT NOT NULL DEFAULT '',
  suffix TEXT NOT NULL DEFAULT '',
  sex_code TEXT NOT NULL DEFAULT '',
  gender_code TEXT NOT NULL DEFAULT '',
  dob TEXT NOT NULL DEFAULT '',
  dod TEXT NOT NULL DEFAULT '',
  global_id TEXT NOT NULL DEFAULT '',
  bsn TEXT NOT NULL DEFAULT '',
  other_ids TEXT NOT NULL DEFAULT '',
  vip_status_code TEXT NOT NULL DEFAULT '',
  mothers_maiden_name TEXT NOT NULL DEFAULT '',
  alias_first TEXT NOT NULL DEFAULT '',
  alias_middle TEXT NOT NULL DEFAULT '',
  alias_last TEXT NOT NULL DEFAULT '',
  address_type TEXT NOT NULL DEFAULT '',
  other_designation TEXT NOT NULL DEFAULT '',
  address1 TEXT NOT NULL DEFAULT '',
  address2 TEXT NOT NULL DEFAULT '',
  county TEXT NOT NULL DEFAULT '',
  city TEXT NOT NULL DEFAULT '',
  state_code TEXT NOT NULL DEFAULT '',
  postal_code TEXT NOT NULL DEFAULT '',
  country_code TEXT NOT NULL DEFAULT '',
  home_phone TEXT NOT NULL DEFAULT '',
  work_phone TEXT NOT NULL DEFAULT '',
  mobile_phone TEXT NOT NULL DEFAULT '',
  email TEXT NOT NULL DEFAULT '',
  comments TEXT NOT NULL DEFAULT '',
  link_group TEXT REFERENCES link_groups(group_key),
  created TEXT NOT NULL DEFAULT '',
  modified TEXT NOT NULL DEFAULT '',
  UNIQUE (org_key, mrn)
);
CREATE INDEX patients_by_group ON patients(link_group) WHERE link_group IS NOT NULL;
-- A link group holds at most one record per organization.
CREATE UNIQUE INDEX patients_one_per_org_in_group ON patients(link_group, org_key) WHERE link_group IS NOT NULL;

CREATE TABLE providers (
  provider_key TEXT PRIMARY KEY,
  org_key TEXT NOT NULL DEFAULT '',
  provider_id TEXT NOT NULL DEFAULT '',
  provider_type INTEGER NOT NULL DEFAULT 0,
  address_type TEXT NOT NULL DEFAULT '',
  other_designation TEXT NOT NULL DEFAULT '',
  county TEXT NOT NULL DEFAULT '',
  last_name TEXT NOT NULL DEFAULT '',
  first_name TEXT NOT NULL DEFAULT '',
  middle_name TEXT NOT NULL DEFAULT '',
  title TEXT NOT NULL DEFAULT '',
  suffix TEXT NOT NULL DEFAULT '',
  address1 TEXT NOT NULL DEFAULT '',
  address2 TEXT NOT NULL DEFAULT '',
  city TEXT NOT NULL DEFAULT '',
  state_code TEXT NOT NULL DEFAULT '',
  postal_code TEXT NOT NULL DEFAULT '',
  country_code TEXT NOT NULL DEFAULT '',
  phone TEXT NOT NULL DEFAULT '',
  fax TEXT NOT NULL DEFAULT '',
  email TEXT NOT NULL DEFAULT ''
);

CREATE TABLE exam_codes (
  exam_code_key TEXT PRIMARY KEY,
  org_key TEXT NOT NULL DEFAULT '',
  code TEXT NOT NULL,
  description TEXT NOT NULL DEFAULT '',
  modality TEXT NOT NULL DEFAULT '',
  body_part TEXT NOT NULL DEFAULT ''
);

CREATE TABLE exam_code_modifiers (
  modifier_key TEXT PRIMARY KEY,
  org_key TEXT NOT NULL DEFAULT '',
  code TEXT NOT NULL,
  description TEXT NOT NULL DEFAULT ''
);

CREATE TABLE locations (
  location_key TEXT PRIMARY KEY,
  org_key TEXT NOT NULL DEFAULT '',
  location_id TEXT NOT NULL,
  description TEXT NOT NULL DEFAULT '',
  active INTEGER NOT NULL DEFAULT 1
);

CREATE TABLE performing_resources (
  resource_key TEXT PRIMARY KEY,
  org_key TEXT NOT NULL DEFAULT '',
  resource_id TEXT NOT NULL,
  description TEXT NOT NULL DEFAULT '',
  modality TEXT NOT NULL DEFAULT ''
);

CREATE TABLE exams (
  exam_key TEXT PRIMARY KEY,
  patient_key TEXT NOT NULL REFERENCES patients(patient_key),
  org_key TEXT NOT NULL REFERENCES organizations(org_key),
  accession TEXT NOT NULL,
  priority_code TEXT NOT NULL DEFAULT '',
  status_code TEXT NOT NULL DEFAULT '',
  scheduled_dt TEXT NOT NULL DEFAULT '',
  performed_dt TEXT NOT NULL DEFAULT '',
  exam_code TEXT NOT NULL DEFAULT '',
  exam_code_key TEXT NOT NULL DEFAULT '',
  modality TEXT NOT NULL DEFAULT '',
  body_part TEXT NOT NULL DEFAULT '',
  description TEXT NOT NULL DEFAULT '',
  performing_resource_key TEXT NOT NULL DEFAULT '',
  performing_resource_id TEXT NOT NULL DEFAULT '',
  ordering_location_key TEXT NOT NULL DEFAULT '',
  ordering_location_id TEXT NOT NULL DEFAULT '',
  signs_symptoms TEXT NOT NULL DEFAULT '',
  history TEXT NOT NULL DEFAULT '',
  comments TEXT NOT NULL DEFAULT '',
  marked_read INTEGER NOT NULL DEFAULT 0,
  link_group TEXT,
  created TEXT NOT NULL DEFAULT '',
  modified TEXT NOT NULL DEFAULT '',
  UNIQUE (org_key, accession)
);
CREATE INDEX exams_by_patient ON exams(patient_key);

-- The exam's providers as the exam holds them (a copy, not a reference:
-- the order keeps the names it was placed with).
CREATE TABLE exam_providers (
  exam_key TEXT NOT NULL REFERENCES exams(exam_key) ON DELETE CASCADE,
  position INTEGER NOT NULL,
  provider_key TEXT NOT NULL DEFAULT '',
  provider_type INTEGER NOT NULL DEFAULT 0,
  provider_id TEXT NOT NULL DEFAULT '',
  org_key TEXT NOT NULL DEFAULT '',
  dicom_name TEXT NOT NULL DEFAULT '',
  work_phone TEXT NOT NULL DEFAULT '',
  PRIMARY KEY (exam_key, position)
);

CREATE TABLE exam_modifiers (
  exam_key TEXT NOT NULL REFERENCES exams(exam_key) ON DELETE CASCADE,
  position INTEGER NOT NULL,
  modifier_key TEXT NOT NULL DEFAULT '',
  code TEXT NOT NULL DEFAULT '',
  description TEXT NOT NULL DEFAULT '',
  PRIMARY KEY (exam_key, position)
);

CREATE TABLE studies (
  study_key TEXT PRIMARY KEY,
  exam_key TEXT REFERENCES exams(exam_key),
  patient_key TEXT NOT NULL REFERENCES patients(patient_key),
  study_uid TEXT NOT NULL,
  description TEXT NOT NULL DEFAULT '',
  modality TEXT NOT NULL DEFAULT '',
  study_dt TEXT NOT NULL DEFAULT '',
  image_count INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX studies_by_patient ON studies(patient_key);
CREATE INDEX studies_by_exam ON studies(exam_key);

-- A pair the user said is not a duplicate; stored with key_a < key_b.
CREATE TABLE ignored_pairs (
  key_a TEXT NOT NULL REFERENCES patients(patient_key) ON DELETE CASCADE,
  key_b TEXT NOT NULL REFERENCES patients(patient_key) ON DELETE CASCADE,
  user_name TEXT NOT NULL DEFAULT '',
  created TEXT NOT NULL DEFAULT '',
  PRIMARY KEY (key_a, key_b),
  CHECK (key_a < key_b)
);

CREATE TABLE audit (
  audit_id INTEGER PRIMARY KEY AUTOINCREMENT,
  at TEXT NOT NULL,
  user_name TEXT NOT NULL DEFAULT '',
  record_key TEXT NOT NULL DEFAULT '',
  event_code INTEGER NOT NULL,
  comment TEXT NOT NULL DEFAULT ''
);
CREATE TRIGGER audit_no_update BEFORE UPDATE ON audit
BEGIN SELECT RAISE(ABORT, 'audit rows are append-only'); END;
CREATE TRIGGER audit_no_delete BEFORE DELETE ON audit
BEGIN SELECT RAISE(ABORT, 'audit rows are append-only'); END;
)SQL";

// Destructive operations keep their reason and what they changed, and a
// merged-away key stays known so it can be told apart from a key never seen.
const char* const kV2 = R"SQL(
CREATE TABLE journal (
  journal_id INTEGER PRIMARY KEY AUTOINCREMENT,
  at TEXT NOT NULL,
  user_name TEXT NOT NULL DEFAULT '',
  operation TEXT NOT NULL,
  subject_key TEXT NOT NULL DEFAULT '',
  other_key TEXT NOT NULL DEFAULT '',
  reason TEXT NOT NULL DEFAULT ''
);
CREATE TABLE journal_images (
  journal_id INTEGER NOT NULL REFERENCES journal(journal_id),
  seq INTEGER NOT NULL,
  table_name TEXT NOT NULL,
  row_key TEXT NOT NULL,
  before_json TEXT NOT NULL,
  PRIMARY KEY (journal_id, seq)
);
CREATE TRIGGER journal_no_update BEFORE UPDATE ON journal
BEGIN SELECT RAISE(ABORT, 'journal rows are append-only'); END;
CREATE TRIGGER journal_no_delete BEFORE DELETE ON journal
BEGIN SELECT RAISE(ABORT, 'journal rows are append-only'); END;
CREATE TRIGGER journal_images_no_update BEFORE UPDATE ON journal_images
BEGIN SELECT RAISE(ABORT, 'journal rows are append-only'); END;
CREATE TRIGGER journal_images_no_delete BEFORE DELETE ON journal_images
BEGIN SELECT RAISE(ABORT, 'journal rows are append-only'); END;

CREATE TABLE merged_patients (
  old_key TEXT PRIMARY KEY,
  survivor_key TEXT NOT NULL,
  journal_id INTEGER NOT NULL REFERENCES journal(journal_id)
);

ALTER TABLE exams ADD COLUMN cancelled INTEGER NOT NULL DEFAULT 0;
)SQL";

// Candidate search reads patients by identifier and by name and birth date.
const char* const kV3 = R"SQL(
CREATE INDEX patients_by_global_id ON patients(global_id) WHERE global_id <> '';
CREATE INDEX patients_by_name_dob ON patients(last_name COLLATE NOCASE, first_name COLLATE NOCASE, dob);
CREATE INDEX patients_by_mrn ON patients(mrn);
CREATE INDEX ignored_pairs_by_b ON ignored_pairs(key_b);
)SQL";

// Merge/link candidates kept as patients change: one row per pair (key_a <
// key_b) carrying what the search filters and sorts on, so the search reads
// index ranges instead of joining patients. `rules` holds a bit per blocking
// rule that pairs them, `reason` the lowest. Totals per reason, half and
// organizations are kept alongside so an unfiltered search never counts rows.
// Writes that bypass the upkeep (bulk loads, repairs) mark the store stale
// through the triggers; a stale store is rebuilt before it is searched.
const char* const kV4 = R"SQL(
CREATE INDEX patients_by_dob ON patients(dob) WHERE dob <> '';

CREATE TABLE candidate_pairs (
  key_a TEXT NOT NULL,
  key_b TEXT NOT NULL,
  rules INTEGER NOT NULL,
  reason INTEGER NOT NULL,
  merge INTEGER NOT NULL,
  org_a TEXT NOT NULL,
  org_b TEXT NOT NULL,
  a_last TEXT NOT NULL COLLATE NOCASE,
  a_first TEXT NOT NULL COLLATE NOCASE,
  a_middle TEXT NOT NULL,
  a_mrn TEXT NOT NULL,
  a_sex TEXT NOT NULL,
  a_dob TEXT NOT NULL,
  a_gid TEXT NOT NULL,
  b_last TEXT NOT NULL COLLATE NOCASE,
  b_first TEXT NOT NULL COLLATE NOCASE,
  b_middle TEXT NOT NULL,
  b_mrn TEXT NOT NULL,
  b_sex TEXT NOT NULL,
  b_dob TEXT NOT NULL,
  b_gid TEXT NOT NULL,
  PRIMARY KEY (key_a, key_b),
  CHECK (key_a < key_b)
);
CREATE INDEX candidate_pairs_by_b ON candidate_pairs(key_b);
CREATE INDEX candidate_pairs_in_order ON candidate_pairs(a_last, a_first, key_a, key_b);
CREATE INDEX candidate_pairs_by_reason ON candidate_pairs(reason, a_last, a_first, key_a, key_b);
CREATE INDEX candidate_pairs_by_half ON candidate_pairs(merge, a_last, a_first, key_a, key_b);
-- The patient criteria's indexes end in the sort columns, so a search reads
-- its matches and their order from the index alone.
CREATE INDEX candidate_pairs_by_b_name ON candidate_pairs(b_last, b_first, a_last, a_first, key_a, key_b);
CREATE INDEX candidate_pairs_by_a_first ON candidate_pairs(a_first, a_last, key_a, key_b);
CREATE INDEX candidate_pairs_by_b_first ON candidate_pairs(b_first, a_last, a_first, key_a, key_b);
CREATE INDEX candidate_pairs_by_a_dob ON candidate_pairs(a_dob, a_sex, a_last, a_first, key_a, key_b);
CREATE INDEX candidate_pairs_by_b_dob ON candidate_pairs(b_dob, b_sex, a_last, a_first, key_a, key_b);
CREATE INDEX candidate_pairs_by_a_mrn ON candidate_pairs(a_mrn);
CREATE INDEX candidate_pairs_by_b_mrn ON candidate_pairs(b_mrn);
CREATE INDEX candidate_pairs_by_a_gid ON candidate_pairs(a_gid);
CREATE INDEX candidate_pairs_by_b_gid ON candidate_pairs(b_gid);

CREATE TABLE candidate_counts (
  reason INTEGER NOT NULL,
  merge INTEGER NOT NULL,
  org_a TEXT NOT NULL,
  org_b TEXT NOT NULL,
  n INTEGER NOT NULL,
  PRIMARY KEY (reason, merge, org_a, org_b)
) WITHOUT ROWID;
CREATE TRIGGER candidate_pairs_counted_in AFTER INSERT ON candidate_pairs
BEGIN
  INSERT INTO candidate_counts(reason, merge, org_a, org_b, n) VALUES (NEW.reason, NEW.merge, NEW.org_a, NEW.org_b, 1)
  ON CONFLICT (reason, merge, org_a, org_b) DO UPDATE SET n = n + 1;
END;
CREATE TRIGGER candidate_pairs_counted_out AFTER DELETE ON candidate_pairs
BEGIN
  UPDATE candidate_counts SET n = n - 1
  WHERE reason = OLD.reason AND merge = OLD.merge AND org_a = OLD.org_a AND org_b = OLD.org_b;
END;
CREATE TRIGGER candidate_pairs_recounted AFTER UPDATE OF reason, merge, org_a, org_b ON candidate_pairs
BEGIN
  UPDATE candidate_counts SET n = n - 1
  WHERE reason = OLD.reason AND merge = OLD.merge AND org_a = OLD.org_a AND org_b = OLD.org_b;
  INSERT INTO candidate_counts(reason, merge, org_a, org_b, n) VALUES (NEW.reason, NEW.merge, NEW.org_a, NEW.org_b, 1)
  ON CONFLICT (reason, merge, org_a, org_b) DO UPDATE SET n = n + 1;
END;

CREATE TABLE candidate_state (
  id INTEGER PRIMARY KEY CHECK (id = 1),
  fresh INTEGER NOT NULL
);
INSERT INTO candidate_state(id, fresh) VALUES (1, 0);
CREATE TRIGGER candidates_stale_on_insert AFTER INSERT ON patients
BEGIN UPDATE candidate_state SET fresh = 0 WHERE fresh <> 0; END;
CREATE TRIGGER candidates_stale_on_delete AFTER DELETE ON patients
BEGIN UPDATE candidate_state SET fresh = 0 WHERE fresh <> 0; END;
CREATE TRIGGER candidates_stale_on_update AFTER UPDATE OF org_key, mrn, last_name, first_name, middle_name, sex_code,
  dob, global_id, link_group ON patients
BEGIN UPDATE candidate_state SET fresh = 0 WHERE fresh <> 0; END;
CREATE TRIGGER candidates_stale_on_ignore AFTER INSERT ON ignored_pairs
BEGIN UPDATE candidate_state SET fresh = 0 WHERE fresh <> 0; END;
CREATE TRIGGER candidates_stale_on_unignore AFTER DELETE ON ignored_pairs
BEGIN UPDATE candidate_state SET fresh = 0 WHERE fresh <> 0; END;
)SQL";

// A blocking rule was added (same names, birth year and month): the kept
// pairs are recomputed when the archive is next opened. The search reads a
// match as its row number and sort names, so the patient criteria's indexes
// no longer carry the two keys; the second patient's birth date index also
// answers whether the first patient meets the same criteria. The first rows
// of a half are read in name order with the half as a filter, so the half's
// own index goes.
const char* const kV5 = R"SQL(
DROP INDEX IF EXISTS candidate_pairs_by_half;
DROP INDEX IF EXISTS candidate_pairs_by_b_name;
DROP INDEX IF EXISTS candidate_pairs_by_a_first;
DROP INDEX IF EXISTS candidate_pairs_by_b_first;
DROP INDEX IF EXISTS candidate_pairs_by_a_dob;
DROP INDEX IF EXISTS candidate_pairs_by_b_dob;
CREATE INDEX candidate_pairs_by_b_name ON candidate_pairs(b_last, b_first, a_last, a_first);
CREATE INDEX candidate_pairs_by_a_first ON candidate_pairs(a_first, a_last);
CREATE INDEX candidate_pairs_by_b_first ON candidate_pairs(b_first, a_last, a_first);
CREATE INDEX candidate_pairs_by_a_dob ON candidate_pairs(a_dob, a_sex, a_last, a_first);
CREATE INDEX candidate_pairs_by_b_dob ON candidate_pairs(b_dob, b_sex, a_last, a_first, a_dob, a_sex);
UPDATE candidate_state SET fresh = 0;
)SQL";

// Rights and audit: exam work has rights of its own per organization (users
// who could register patients keep their exam work); the audit trail and the
// journal become hash chains (see Ledger), rows written before are sealed in
// C++ right after this step, in the same transaction. Every statement may run
// again on an archive that has them.
const char* const kV6 = R"SQL(
CREATE TABLE IF NOT EXISTS exam_rights (
  user_name TEXT NOT NULL REFERENCES users(user_name) ON DELETE CASCADE,
  org_key TEXT NOT NULL REFERENCES organizations(org_key) ON DELETE CASCADE,
  can_edit_exams INTEGER NOT NULL DEFAULT 0,
  can_delete_exams INTEGER NOT NULL DEFAULT 0,
  can_detach_studies INTEGER NOT NULL DEFAULT 0,
  PRIMARY KEY (user_name, org_key)
);
INSERT OR IGNORE INTO exam_rights(user_name, org_key, can_edit_exams, can_delete_exams, can_detach_studies)
  SELECT user_name, org_key, can_create, can_create, can_create FROM user_rights;

CREATE TABLE IF NOT EXISTS ledger (
  table_name TEXT NOT NULL,
  row_id INTEGER NOT NULL,
  previous TEXT NOT NULL,
  digest TEXT NOT NULL,
  PRIMARY KEY (table_name, row_id)
) WITHOUT ROWID;
CREATE TRIGGER IF NOT EXISTS ledger_no_update BEFORE UPDATE ON ledger
BEGIN SELECT RAISE(ABORT, 'ledger rows are append-only'); END;
CREATE TRIGGER IF NOT EXISTS ledger_no_delete BEFORE DELETE ON ledger
BEGIN SELECT RAISE(ABORT, 'ledger rows are append-only'); END;
CREATE TABLE IF NOT EXISTS ledger_heads (
  table_name TEXT PRIMARY KEY,
  row_count INTEGER NOT NULL,
  last_row INTEGER NOT NULL,
  head TEXT NOT NULL
);
INSERT OR IGNORE INTO ledger_heads VALUES ('audit', 0, 0, ''), ('journal', 0, 0, ''), ('journal_images', 0, 0, '');
)SQL";

// --- Patient record versions (patient dialog saves) ---
// Every demographic save of a patient (it always sets `modified`) counts up
// the record's version; a dialog saves only the version it read, so a save
// made on another workstation meanwhile is never overwritten. Link changes
// leave the version alone.
const char* const kV7 = R"SQL(
ALTER TABLE patients ADD COLUMN version INTEGER NOT NULL DEFAULT 1;
CREATE TRIGGER patients_version_on_save AFTER UPDATE OF modified ON patients
BEGIN UPDATE patients SET version = OLD.version + 1 WHERE patient_key = NEW.patient_key; END;
)SQL";

// ---- exam dialog: pickers and saves --------------------------------------
// The pickers look dictionaries up by a typed prefix, ignoring case: each
// searched column gets an index in that collation, so a prefix is a range
// read however large the dictionary. Providers are looked up by name.
// An exam's version (0 while it has no row here) is raised by every save, so
// a save made from a stale copy (another workstation saved in between) can be
// refused. Every statement may run again on an archive that has them.
const char* const kV8 = R"SQL(
CREATE INDEX IF NOT EXISTS exam_codes_by_code ON exam_codes(code COLLATE NOCASE);
CREATE INDEX IF NOT EXISTS exam_code_modifiers_by_code ON exam_code_modifiers(code COLLATE NOCASE);
CREATE INDEX IF NOT EXISTS locations_by_id ON locations(location_id COLLATE NOCASE);
CREATE INDEX IF NOT EXISTS performing_resources_by_id ON performing_resources(resource_id COLLATE NOCASE);
CREATE INDEX IF NOT EXISTS providers_by_name ON providers(last_name COLLATE NOCASE, first_name COLLATE NOCASE);
CREATE TABLE IF NOT EXISTS exam_versions (
  exam_key TEXT PRIMARY KEY REFERENCES exams(exam_key) ON DELETE CASCADE,
  version INTEGER NOT NULL
);
)SQL";
// ---- end of the exam dialog's block ----------------------------------------

// Rules for registration errors were added (identifiers one typing error
// apart, sex unknown, a birth date missing, near or one digit off, similar names):
// the kept pairs are recomputed when the archive is next opened. The upkeep
// finds patients by first name and the last name's initial.
const char* const kV9 = R"SQL(
CREATE INDEX IF NOT EXISTS patients_by_first_name ON patients(first_name COLLATE NOCASE, last_name COLLATE NOCASE, dob);
UPDATE candidate_state SET fresh = 0;
)SQL";

// The kept pairs are rebuilt beside themselves and swapped in (see
// CandidateRebuild). While a rebuild runs, each patient or ignored pair that
// changes is noted, so the swap can bring the new pairs up to date for it.
// `last` counts the rebuilds ever started; `running` is the one under way, 0
// for none. Rules were added (similar names with a birth date missing, near,
// or two errors apart): the kept pairs are recomputed when the archive is next
// opened. The upkeep finds patients by the initials of their names.
const char* const kV10 = R"SQL(
CREATE TABLE IF NOT EXISTS candidate_rebuild (
  id INTEGER PRIMARY KEY CHECK (id = 1),
  last INTEGER NOT NULL,
  running INTEGER NOT NULL
);
INSERT OR IGNORE INTO candidate_rebuild(id, last, running) VALUES (1, 0, 0);
CREATE TABLE IF NOT EXISTS candidate_changes (patient_key TEXT NOT NULL);
CREATE TRIGGER IF NOT EXISTS candidates_noted_on_insert AFTER INSERT ON patients
WHEN (SELECT running FROM candidate_rebuild WHERE id = 1) <> 0
BEGIN INSERT INTO candidate_changes(patient_key) VALUES (NEW.patient_key); END;
CREATE TRIGGER IF NOT EXISTS candidates_noted_on_delete AFTER DELETE ON patients
WHEN (SELECT running FROM candidate_rebuild WHERE id = 1) <> 0
BEGIN INSERT INTO candidate_changes(patient_key) VALUES (OLD.patient_key); END;
CREATE TRIGGER IF NOT EXISTS candidates_noted_on_update AFTER UPDATE OF patient_key, org_key, mrn, last_name,
  first_name, middle_name, sex_code, dob, global_id, link_group ON patients
WHEN (SELECT running FROM candidate_rebuild WHERE id = 1) <> 0
BEGIN
  INSERT INTO candidate_changes(patient_key) VALUES (NEW.patient_key);
  INSERT INTO candidate_changes(patient_key) SELECT OLD.patient_key WHERE OLD.patient_key <> NEW.patient_key;
END;
CREATE TRIGGER IF NOT EXISTS candidates_noted_on_ignore AFTER INSERT ON ignored_pairs
WHEN (SELECT running FROM candidate_rebuild WHERE id = 1) <> 0
BEGIN INSERT INTO candidate_changes(patient_key) VALUES (NEW.key_a), (NEW.key_b); END;
CREATE TRIGGER IF NOT EXISTS candidates_noted_on_unignore AFTER DELETE ON ignored_pairs
WHEN (SELECT running FROM candidate_rebuild WHERE id = 1) <> 0
BEGIN INSERT INTO candidate_changes(patient_key) VALUES (OLD.key_a), (OLD.key_b); END;
CREATE INDEX IF NOT EXISTS patients_by_initials ON patients(
  min(upper(substr(last_name, 1, 1)), upper(substr(first_name, 1, 1))),
  max(upper(substr(last_name, 1, 1)), upper(substr(first_name, 1, 1))), dob) WHERE dob <> '';
UPDATE candidate_state SET fresh = 0;
)SQL";

const char* const kMigrations[] = {kV1, kV2, kV3, kV4, kV5, kV6, kV7, kV8, kV9, kV10};

} // namespace

int Schema::Count()
{
    return static_cast<int>(sizeof(kMigrations) / sizeof(kMigrations[0]));
}

int Schema::LedgerVersion()
{
    return 6;
}

const char* Schema::Step(int version)
{
    if (version < 1 || version > Count())
        return nullptr;
    return kMigrations[version - 1];
}
