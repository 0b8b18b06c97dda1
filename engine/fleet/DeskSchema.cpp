#include "fleet/DeskSchema.h"

#include "fleet/FleetDatabase.h"

namespace {

constexpr const char* Tables[] = {
    // `until` and `asked_until` are of the server's clock, as all that is compared with them.
    "CREATE TABLE ptz_lease (camera text PRIMARY KEY REFERENCES camera ON DELETE CASCADE, desk uuid NOT "
    "NULL, "
    "holder text NOT NULL, until timestamptz NOT NULL, asking_desk uuid, asking text, asked_until "
    "timestamptz)",
    "CREATE TABLE deck_view (name text PRIMARY KEY CHECK (length(name) BETWEEN 1 AND 60), description jsonb "
    "NOT "
    "NULL, changed_by text NOT NULL DEFAULT session_user, CHECK (length(description::text) < 100000))",
    R"(
CREATE FUNCTION tell_view() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    PERFORM tell_change('view', ARRAY['']);
    RETURN NULL;
END $$)",
    "CREATE TRIGGER view_changed AFTER INSERT OR UPDATE OR DELETE ON deck_view FOR EACH STATEMENT EXECUTE "
    "FUNCTION tell_view()",
};

/// Who logs in can't take another one's name; of the desk's place it is told what it says itself.
constexpr const char* Leases[] = {
    R"(
CREATE FUNCTION operator_at(p_place text) RETURNS text LANGUAGE sql STABLE AS $$
    SELECT session_user || '@' || left(p_place, 60) $$)",
    R"(
CREATE FUNCTION take_ptz(p_camera text, p_desk uuid, p_place text) RETURNS TABLE (is_mine boolean, left_ms bigint, who text)
    LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
BEGIN
    INSERT INTO ptz_lease AS l (camera, desk, holder, until)
        VALUES (p_camera, p_desk, operator_at(p_place), clock_timestamp() + interval '15 seconds')
        ON CONFLICT (camera) DO UPDATE SET holder = EXCLUDED.holder, until = EXCLUDED.until, desk = EXCLUDED.desk,
            asking_desk = CASE WHEN l.desk = EXCLUDED.desk THEN l.asking_desk END,
            asking = CASE WHEN l.desk = EXCLUDED.desk THEN l.asking END
        WHERE l.desk = EXCLUDED.desk OR l.until <= clock_timestamp();
    IF FOUND THEN
        PERFORM tell_change('ptz', ARRAY[p_camera]);
    END IF;
    RETURN QUERY SELECT l.desk = p_desk, (extract(epoch FROM l.until - clock_timestamp()) * 1000)::bigint,
        l.holder FROM ptz_lease l WHERE l.camera = p_camera;
END $$)",
    R"(
CREATE FUNCTION ask_ptz(p_camera text, p_desk uuid, p_place text) RETURNS void
    LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
BEGIN
    UPDATE ptz_lease SET asking_desk = p_desk, asking = operator_at(p_place),
        asked_until = clock_timestamp() + interval '30 seconds'
        WHERE camera = p_camera AND desk <> p_desk AND until > clock_timestamp();
    PERFORM tell_change('ptz', ARRAY[p_camera]);
END $$)",
    R"(
CREATE FUNCTION give_ptz(p_camera text, p_desk uuid) RETURNS void
    LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
BEGIN
    UPDATE ptz_lease SET desk = asking_desk, holder = asking, until = clock_timestamp() + interval '15 seconds',
        asking_desk = NULL, asking = NULL
        WHERE camera = p_camera AND desk = p_desk AND asking_desk IS NOT NULL AND asked_until > clock_timestamp();
    IF NOT FOUND THEN
        DELETE FROM ptz_lease WHERE camera = p_camera AND desk = p_desk;
    END IF;
    PERFORM tell_change('ptz', ARRAY[p_camera]);
END $$)",
    R"(
CREATE FUNCTION keep_ptz(p_camera text, p_desk uuid) RETURNS void
    LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
BEGIN
    UPDATE ptz_lease SET asking_desk = NULL, asking = NULL WHERE camera = p_camera AND desk = p_desk;
    PERFORM tell_change('ptz', ARRAY[p_camera]);
END $$)",
};

/// What was acknowledged long after it came is told by itself, as nobody reads the old marks at each new one.
constexpr const char* Acknowledge = R"(
CREATE OR REPLACE FUNCTION acknowledge(p_camera text, p_start bigint) RETURNS void LANGUAGE plpgsql AS $$
BEGIN
    UPDATE span SET acknowledged_by = session_user, acknowledged_ms = extract(epoch FROM clock_timestamp()) * 1000
        WHERE camera = p_camera AND start_ms = p_start AND acknowledged_by IS NULL;
    IF FOUND THEN
        PERFORM tell_change('seen', ARRAY[p_camera]);
    END IF;
END $$)";

constexpr const char* Rights[] = {
    "GRANT SELECT ON ptz_lease, deck_view TO panedeck_viewer",
    "GRANT INSERT, UPDATE, DELETE ON deck_view TO panedeck_operator",
    "REVOKE EXECUTE ON FUNCTION take_ptz(text, uuid, text), ask_ptz(text, uuid, text), give_ptz(text, uuid), "
    "keep_ptz(text, uuid) FROM PUBLIC",
    "GRANT EXECUTE ON FUNCTION take_ptz(text, uuid, text), ask_ptz(text, uuid, text), give_ptz(text, uuid), "
    "keep_ptz(text, uuid) TO panedeck_operator",
    "UPDATE schema_version SET version = 3",
};

} // namespace

bool DeskSchema::make(FleetDatabase& database)
{
    return database.runAll(Tables) && database.runAll(Leases) && database.run(Acknowledge) &&
           database.runAll(Rights);
}
