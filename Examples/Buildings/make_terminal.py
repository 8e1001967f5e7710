#!/usr/bin/env python3
"""Draws the demo building, Korvani Harbour Terminal, and writes terminal.building.geojson.

    make_terminal.py            writes the file beside this script
    make_terminal.py --check    writes nothing; exit status 1 when the file is not what this
                                script draws, or when the building breaks a rule

The terminal is invented: a ferry terminal over an underground terminus. The main hall measures
120 x 60 m, the pier to the east of it reaches 150 m into the harbour.

    level 2   offices, restaurant and terrace | upper pier: gates B1 to B6
    level 1   departures, check-in, security  | pier: shops, gates A1 to A8
    level 0   arrivals, streets and promenade | baggage reclaim, customs
    level -1  underground station

What lies to the right of the bar is airside: one comes there only through the security check on
level 1, and leaves it through the exit beside it or through customs on level 0; all three are
one-way. Each side of the bar is a region of its own, with the border halfway along the passage
between them, where a person sees nodes of both.

All lengths are metres east and north of the hall's south-west corner; walls run along the axes.
Corridors have a node every 8 to 15 m, at junctions, at doors and where a room's door faces them.
floorplan.py has the drawing board, floorplan_checks.py what must hold.
"""
import argparse
import sys
from pathlib import Path

import floorplan_checks
from floorplan import RAILING, SCREEN, TRACK, FloorPlan, Frame, Rect, file_text

TARGET = Path(__file__).resolve().with_name("terminal.building.geojson")
SOUTH_WEST_CORNER = Frame(latitude=54.3200, longitude=10.1300)

MEMBERS = {
    "name": "Korvani Harbour Terminal",
    "attribution": "Korvani example data: an invented building",
    "licence": "CC0-1.0",
    "levels": [{"level": -1, "name": "Underground station"}, {"level": 0, "name": "Arrivals"},
               {"level": 1, "name": "Departures"}, {"level": 2, "name": "Upper deck"}],
}
RULES = {
    "least": {"levels": 4, "nodes": 200, "places": 40, "entrances": 4},
    "with_steps_only": {("Viewing gallery", 2), ("Toilets", -1)},
    "checkpoint": "Security check",
    "gate_prefix": "Gate ",
}
STEPS = {"multiplicator": 1.5, "barrierFree": False, "type": "steps"}
RAMP = {"multiplicator": 1.2, "type": "ramp"}
ONE_WAY = {"oneway": True}

ESCALATORS_AND_STAIRS = {1.4: "escalator up", 0.0: "stairs", -1.4: "escalator down"}


def draw():
    plan = FloorPlan(SOUTH_WEST_CORNER, lowest_level=-1)
    regions(plan)
    for part in (underground_station, arrivals_hall, forecourt, promenade, baggage_reclaim,
                 departures_hall, security, pier, upper_hall, upper_pier, lifts_and_stairs):
        part(plan)
    return plan.collection(MEMBERS)


def regions(plan):
    plan.region(-1, Rect(-66, -6, 130, 62), "Underground station")
    plan.region(0, Rect(-58, -22, 126, 82), "Arrivals hall and squares")
    plan.region(0, Rect(126, 8, 190, 52), "Baggage reclaim")
    plan.region(1, Rect(-6, -18, 126, 66), "Departures hall")
    plan.region(1, Rect(126, 6, 290, 54), "Pier")
    plan.region(2, Rect(-6, -6, 126, 66), "Upper deck")
    plan.region(2, Rect(126, 6, 268, 54), "Upper pier")


def lifts_and_stairs(plan):
    """Everything that joins levels. Most people ride from the station to the middle of the
    arrivals hall, turn to the big flight opposite the main entrance and go up to check-in."""
    everywhere = (-1, 0, 1, 2)
    plan.lift(everywhere, (36, 40.5), 4.5, "Lift A")
    plan.lift(everywhere, (84, 40.5), 4.5, "Lift B")
    plan.lift((0, 1, 2), (140, 23.5), 6.5, "Lift C")

    plan.flight(-1, 0, Rect(-42, 16.5, -30, 19.5), "west", {0.0: "stairs"})
    plan.flight(-1, 0, Rect(92, 27.2, 104, 32.8), "west", ESCALATORS_AND_STAIRS)
    plan.flight(0, 1, Rect(57.2, 21.5, 62.8, 33.5), "north", ESCALATORS_AND_STAIRS)
    plan.flight(1, 2, Rect(73.2, 26.5, 78.8, 38.5), "south", ESCALATORS_AND_STAIRS)

    plan.flight(0, 1, Rect(156, 19.2, 168, 22.8), "east", {-0.8: "stairs", 0.8: "escalator down"})
    plan.flight(1, 2, Rect(146.9, 36.2, 158.9, 41.8), "east", ESCALATORS_AND_STAIRS)


def underground_station(plan):
    """Level -1: two platforms between four tracks that end at a concourse in the east."""
    level = -1
    plan.hall(level, Rect(-62, 6, 76, 54), None, "hall")
    plan.hall(level, Rect(76, 10, 116, 50), "Concourse", "hall")
    plan.area(level, Rect(-62, 12, 76, 24), "Platforms 1 and 2", "platform")
    plan.area(level, Rect(-62, 36, 76, 48), "Platforms 3 and 4", "platform")
    for name, south, north in (("Track 1", 6.5, 12), ("Tracks 2 and 3", 24, 36),
                               ("Track 4", 48, 53.5)):
        plan.block(level, Rect(-61, south, 74, north), name, "track", strength=TRACK)
    for y in (18, 45):
        plan.door(level, (76, y), width=1.6)  # the ticket gates
    plan.row(level, 18, -23.5, -11, 2, 15, 28, 41, 54, 66, 76, 88, 97, 110.5)
    plan.row(level, 45, -18, -5, 8, 22, 36.4, 49, 62, 76, 84.4, 88, 97, 110.5)
    plan.column(level, 88, 18, 31.5, 45)
    plan.column(level, 110.5, 18, 30, 45)
    for number, point in enumerate(((28, 14), (28, 22), (8, 38.5), (8, 46.5)), start=1):
        plan.place(level, point, f"Platform {number}", "platform")
    plan.place(level, (85.5, 25), "Ticket machines", "tickets")

    south = [(80, 93, 88, "Toilets", "toilet", STEPS),
             (93, 103, 97, "Accessible toilet", "toilet", None),
             (103, 116, 110.5, "Underground service centre", "service", None)]
    for west, east, door, name, category, entry in south:
        plan.room(level, Rect(west, 2, east, 10), name, category, (door, 10), 8, entry)
    north = [(78, 91, 84.4, "Newsagent", "shop"), (91, 104, 97, "Coffee bar", "food"),
             (104, 116, 110.5, "Bicycle station", "service")]
    for west, east, door, name, category in north:
        plan.room(level, Rect(west, 50, east, 58), name, category, (door, 50), 5)
    plan.room(level, Rect(116, 10, 126, 24), "Florist", "shop", (116, 18), 5.5)
    plan.room(level, Rect(116, 24, 126, 37), "Lockers", "luggage", (116, 30), 5.5)
    plan.hall(level, Rect(116, 37, 126, 50), None, "staff")


def arrivals_hall(plan):
    """Level 0, inside: two avenues along the rows of rooms, four aisles between them."""
    level = 0
    plan.hall(level, Rect(0, 0, 120, 60), "Arrivals hall", "hall")
    plan.row(level, 15, 8, 23, 37, 48, 60, 72, 83, 97, 110)
    plan.row(level, 30, -6, plan.door(level, (0, 30), width=1.6)[0], 8, 22, 35, 48)
    plan.row(level, 30, 72, 85.5)
    plan.row(level, 45, 8, 23, 36.4, 48, 60, 72, 84.4, 97, 110)
    for x in (8, 48, 72, 110):
        plan.column(level, x, 15, 30, 45)
    plan.column(level, 60, -10, plan.door(level, (60, 0), width=1.6)[1], 15)
    plan.column(level, 60, 45, plan.door(level, (60, 60), width=1.6)[1], 64)
    plan.place(level, (60, -3), "Main entrance", "entrance", entrance=True)
    plan.place(level, (-3, 31.5), "West entrance", "entrance", entrance=True)
    plan.place(level, (61.5, 62), "Promenade entrance", "entrance", entrance=True)

    plan.block(level, Rect(57, 36, 63, 38.5), "Information", "service")
    plan.place(level, (60, 40.5), "Information", "service")
    plan.place(level, (107, 32), "Meeting point", "service")
    plan.place(level, (22, 32.5), "Arrivals board", "service")

    south = [(0, 16, 8, "Police", "police"), (16, 30, 23, "Lost property", "service"),
             (30, 44, 37, "Luggage lockers", "luggage"), (76, 90, 83, "Currency exchange", "bank"),
             (90, 104, 97, "Pharmacy", "shop"), (104, 120, 110, "Car hire", "service")]
    for west, east, door, name, category in south:
        plan.room(level, Rect(west, 0, east, 10), name, category, (door, 10), 5)
    north = [(0, 16, 8, "Café Beacon", "food"), (16, 30, 23, "Bakery", "food"),
             (30, 42, 36.4, "Toilets", "toilet"), (42, 52, 48, "Accessible toilet", "toilet"),
             (68, 78, 72, "Tourist information", "service"), (78, 91, 84.4, "Supermarket", "shop"),
             (91, 104, 97, "Medical centre", "medical"),
             (104, 120, 110, "Harbour office", "office")]
    for west, east, door, name, category in north:
        plan.room(level, Rect(west, 50, east, 60), name, category, (door, 50), 5)


def forecourt(plan):
    """Level 0, outside: the street in the south and West Square."""
    level = 0
    plan.area(level, Rect(-56, -20, 122, 0), "Station forecourt", "outdoor")
    plan.area(level, Rect(-56, 0, 0, 76), "West Square", "outdoor")
    plan.row(level, -10, -48.5, -34, -20, -6, 8, 21, 34, 47, 60, 73, 86, 99, 112)
    plan.column(level, -48.5, 18, 4, -10)
    plan.column(level, -6, -10, 3, 16, 30, 43, 56, 70)
    plan.place(level, (-48.5, 21), "Underground entrance West Square", "entrance", entrance=True)
    plan.place(level, (-34, -13), "Bus stop 1", "bus")
    plan.place(level, (-20, -13), "Bus stop 2", "bus")
    plan.place(level, (86, -13), "Taxi rank", "taxi")
    plan.place(level, (112, -13), "Car park", "parking")
    plan.place(level, (-9, 43), "Bicycle racks", "parking")


def promenade(plan):
    """Level 0, outside, north: it lies lower than the hall, so that steps and a ramp lead up."""
    level = 0
    plan.area(level, Rect(0, 60, 122, 76), "Harbour promenade", "outdoor")
    plan.area(level, Rect(55, 60, 80, 66), None, "outdoor")
    plan.row(level, 70, -6, 8, 21, 34, 47, 60, 69, 78, 91, 104)
    plan.wall(level, (55, 60), (55, 66), (80, 66), (80, 60), strength=RAILING)
    plan.wall(level, (67, 62.5), (76, 62.5), strength=RAILING)
    plan.opening(level, (60, 66), 3.0)
    plan.opening(level, (78, 66), 2.4)
    plan.column(level, 60, 64, 70, **STEPS)
    plan.row(level, 64, 60, 66)
    plan.row(level, 64, 66, 78, **RAMP)
    plan.column(level, 78, 64, 70)
    plan.place(level, (21, 73), "Harbour tours jetty", "jetty")
    plan.place(level, (104, 73), "Old lighthouse", "sight")


def baggage_reclaim(plan):
    """Level 0, airside: arriving passengers come down from the pier and leave through customs."""
    level = 0
    plan.hall(level, Rect(132, 18, 180, 42), "Baggage reclaim", "hall")
    plan.hall(level, Rect(120, 26, 132, 34), "Customs", "security")
    way_in, way_out = plan.door(level, (132, 30), 1.6), plan.door(level, (120, 30), 1.6)
    plan.row(level, 30, 140.4, way_in[0], 128.5, 123.5, way_out[0], 110, **ONE_WAY)
    plan.row(level, 30, 140.4, 149.5, 162, 174)
    plan.column(level, 149.5, 21, 30)
    for name, south, north in (("Belt 1", 33.5, 35), ("Belt 2", 38, 39.5)):
        plan.block(level, Rect(152, south, 174, north), name, "luggage")
    plan.place(level, (162, 31.8), "Baggage reclaim", "luggage")
    plan.place(level, (128.5, 31.5), "Customs", "security")
    plan.room(level, Rect(132, 34, 146, 42), "Reclaim toilets", "toilet", (140.4, 34), 4)
    plan.room(level, Rect(169, 18, 180, 26), "Lost luggage service", "service", (174, 26), 4)


def departures_hall(plan):
    """Level 1, landside: check-in islands in the west, the drop-off deck in front."""
    level = 1
    plan.hall(level, Rect(0, 0, 120, 60), "Departures hall", "hall")
    plan.row(level, 15, 8, 23, 37, 48, 60, 68, 76, 84, 90)
    plan.row(level, 30, 8, 23, 35, 48)
    plan.row(level, 45, 8, 23, 36.4, 48, 60, 68, 76, 84.4, 90)
    for x in (8, 48, 68):
        plan.column(level, x, 15, 30, 45)
    plan.column(level, 60, 40, 45)
    plan.column(level, 90, 15, 24, 36, 45)
    for name, south, north in (("Check-in A", 22, 25.5), ("Check-in B", 34.5, 37.5)):
        plan.block(level, Rect(12, south, 44, north), name, "checkin")
    plan.place(level, (23, 27.5), "Check-in A", "checkin")
    plan.place(level, (23, 32.5), "Check-in B", "checkin")
    plan.place(level, (66, 28), "Self-service check-in", "checkin")

    plan.area(level, Rect(40, -14, 80, 0), "Drop-off deck", "outdoor")
    plan.wall(level, (40, 0), (40, -14), (80, -14), (80, 0), strength=RAILING)
    plan.column(level, 60, -8, plan.door(level, (60, 0), width=1.6)[1], 15)
    plan.row(level, -8, 48, 60, 72)
    plan.place(level, (60, -3), "Departures entrance", "entrance", entrance=True)
    plan.place(level, (72, -11), "Passenger drop-off", "taxi")

    south = [(0, 16, 8, "Quiet room", "service"), (16, 30, 23, "Family room", "service"),
             (30, 44, 37, "Left luggage", "luggage"),
             (76, 96, 84, "Shipping line lounge", "lounge")]
    for west, east, door, name, category in south:
        plan.room(level, Rect(west, 0, east, 10), name, category, (door, 10), 5)
    north = [(0, 16, 8, "Ferry tickets", "tickets"), (16, 30, 23, "Bookshop", "shop"),
             (30, 42, 36.4, "Toilets", "toilet"), (42, 52, 48, "Accessible toilet", "toilet"),
             (52, 66, 60, "Sextant Bistro", "food"), (66, 80, 76, "Bank", "bank"),
             (80, 96, 84.4, "Travel pharmacy", "shop")]
    for west, east, door, name, category in north:
        plan.room(level, Rect(west, 50, east, 60), name, category, (door, 50), 5)


def security(plan):
    """Level 1: the only way to the gates, and beside it the way back. Both are one-way."""
    level = 1
    plan.hall(level, Rect(96, 28, 120, 50), "Security", "security")
    plan.hall(level, Rect(96, 20, 120, 28), "Exit from gates", "security")
    for rect in (Rect(96, 0, 120, 20), Rect(96, 50, 120, 60)):
        plan.hall(level, rect, None, "staff")
    plan.wall(level, (108, 28), (108, 50), strength=SCREEN)
    for south in (32, 39):
        plan.block(level, Rect(105, south, 107.5, south + 2), None, "security")
    plan.hall(level, Rect(120, 20, 132, 40), "Pier bridge", "hall")
    gate_in = [plan.door(level, (x, 36), width)[0] for x, width in ((96, 1.6), (108, 1.0),
                                                                   (120, 1.6))]
    gate_out = [plan.door(level, (x, 24), 1.6)[0] for x in (120, 96)]
    plan.row(level, 36, 90, gate_in[0], 102, gate_in[1], 114, gate_in[2], 123, **ONE_WAY)
    plan.row(level, 24, 123, gate_out[0], 108, gate_out[1], 90, **ONE_WAY)
    plan.column(level, 123, 36, 30, 24)
    plan.row(level, 30, 123, 129, plan.door(level, (132, 30), 1.6)[0], 140.4)
    plan.place(level, (101, 38.5), "Security check", "security")


def gates(plan, level, names, wests):
    """Gate lounges in pairs along the walkway of a pier: odd numbers south, even ones north."""
    for index, (west, east) in enumerate(zip(wests, wests[1:])):
        middle = (west + east) / 2
        odd, even = names[2 * index:2 * index + 2]
        plan.room(level, Rect(west, 18, east, 26), f"Gate {odd}", "gate", (middle, 26), 4)
        plan.room(level, Rect(west, 34, east, 42), f"Gate {even}", "gate", (middle, 34), 4)


def pier(plan):
    """Level 1, airside: a head with shops, then the walkway between the gates."""
    level = 1
    plan.hall(level, Rect(132, 12, 180, 48), "Pier head", "hall")
    plan.hall(level, Rect(180, 26, 282, 34), "Pier A", "hall")
    plan.opening(level, (180, 30), 8.0)
    plan.row(level, 30, 140.4, 150, 162, 174.5, 186, 194.5, 203, 214, 225, 236, 247, 258.5, 270)
    plan.column(level, 140.4, 30, 39)
    plan.column(level, 174.5, 21, 30)
    plan.room(level, Rect(144, 12, 155, 25), "Duty-free shop", "shop", (150, 25), 5)
    plan.room(level, Rect(167, 36, 180, 48), "Café Windrose", "food", (174.5, 36), 6)
    plan.room(level, Rect(180, 18, 192, 26), "Pier toilets", "toilet", (186, 26), 4)
    plan.room(level, Rect(180, 34, 192, 42), "Accessible pier toilet", "toilet", (186, 34), 4)
    gates(plan, level, [f"A{n}" for n in range(1, 9)], (192, 214, 236, 258, 282))
    plan.place(level, (278, 30), "Harbour view", "sight")


def upper_hall(plan):
    """Level 2, landside: offices in the south, restaurant and terrace in the north, and an
    opening down to check-in. The viewing gallery is reached by steps only."""
    level = 2
    plan.hall(level, Rect(0, 0, 120, 60), "Upper deck", "hall")
    plan.block(level, Rect(20, 20, 66, 37), None, "void", strength=RAILING)
    plan.row(level, 15, 12, 26, 40, 55, 70, 76, 86, 96, 110)
    plan.row(level, 45, 12, 24, 36.4, 48, 59, 70, 84.4, 96, 110)
    for x in (12, 70, 96):
        plan.column(level, x, 15, 30, 45)
    plan.column(level, 76, 15, 20)
    south = [(0, 16, 12, "Harbour master", "office"),
             (16, 32, 26, "Conference room Fjord", "meeting"),
             (32, 48, 40, "Conference room Sound", "meeting"),
             (48, 62, 55, "Toilets", "toilet"), (62, 73, 70, "Accessible toilet", "toilet"),
             (73, 91, 86, "Terminal administration", "office"),
             (91, 104, 96, "Press room", "meeting"), (104, 120, 110, "Shipping agents", "office")]
    for west, east, door, name, category in south:
        plan.room(level, Rect(west, 0, east, 10), name, category, (door, 10), 5)
    north = [(56, 78, 70, "Compass Restaurant", "food"), (78, 91, 84.4, "Harbour museum", "sight"),
             (91, 104, 96, "Reading room", "service"), (104, 120, 110, "Captains' club", "lounge")]
    for west, east, door, name, category in north:
        plan.room(level, Rect(west, 50, east, 60), name, category, (door, 50), 5)
    plan.room(level, Rect(104, 22, 120, 38), "Viewing gallery", "sight", (104, 30), 8, STEPS)

    plan.hall(level, Rect(0, 50, 56, 60), "Harbour terrace", "outdoor")
    for x in (24, 48):
        plan.column(level, x, 45, plan.door(level, (x, 50), width=1.6)[1], 55)
    plan.row(level, 55, 12, 24, 36, 48)
    plan.place(level, (36, 57.5), "Harbour terrace", "outdoor")


def upper_pier(plan):
    """Level 2, airside: the gates of the tall ferries, over the pier."""
    level = 2
    plan.hall(level, Rect(132, 12, 180, 48), "Upper pier head", "hall")
    plan.hall(level, Rect(180, 26, 258, 34), "Pier B", "hall")
    plan.opening(level, (180, 30), 8.0)
    plan.row(level, 30, 140.4, 152.5, 165.4, 175, 186, 194.5, 203, 214, 225, 236, 247)
    plan.column(level, 165.4, 30, 39)
    plan.room(level, Rect(146, 12, 160, 25), "Passenger lounge", "lounge", (152.5, 25), 5)
    plan.room(level, Rect(166, 12, 180, 25), "Gull Café", "food", (175, 25), 5)
    plan.room(level, Rect(170, 36, 180, 48), "Children's play area", "service", (175, 36), 6)
    plan.room(level, Rect(180, 18, 192, 26), "Upper pier toilets", "toilet", (186, 26), 4)
    plan.room(level, Rect(180, 34, 192, 42), "Accessible upper pier toilet", "toilet", (186, 34), 4)
    gates(plan, level, [f"B{n}" for n in range(1, 7)], (192, 214, 236, 258))


def difference(text, path):
    """How the file differs from the text, as a sentence; None when it does not."""
    try:
        stored = path.read_text(encoding="utf-8")
    except FileNotFoundError:
        return f"{path.name} is missing"
    if stored == text:
        return None
    lines = zip(text.splitlines() + [None], stored.splitlines() + [None])
    number = next((n for n, (ours, theirs) in enumerate(lines, start=1) if ours != theirs), 1)
    return f"{path.name} is not what make_terminal.py draws, from line {number} on"


def main(arguments):
    parser = argparse.ArgumentParser(description="Draws the demo building.")
    parser.add_argument("--check", action="store_true",
                        help="compare with the file instead of writing it")
    check = parser.parse_args(arguments).check
    collection = draw()
    text = file_text(collection)
    found = floorplan_checks.problems(collection, **RULES)
    if check and (differs := difference(text, TARGET)):
        found.append(differs)
    for sentence in found:
        print(f"make_terminal.py: {sentence}", file=sys.stderr)
    if found:
        return 1
    if not check:
        TARGET.write_text(text, encoding="utf-8")
    kinds = [feature["properties"]["kind"] for feature in collection["features"]]
    print(f"{TARGET.name}: {kinds.count('node')} nodes, {kinds.count('edge')} edges, "
          f"{kinds.count('obstacle')} obstacles, {kinds.count('place')} places, "
          f"{'as drawn' if check else 'written'}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
