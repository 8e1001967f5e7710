"""A small drawing board for buildings: what make_terminal.py draws on.

One draws in metres, (x east, y north) of an origin, on numbered levels: rooms with a door,
corridors as lines of nodes, flights of stairs and escalators, lifts. The board cuts the doors
out of the walls, numbers the nodes and gives the whole as a building file: a GeoJSON
FeatureCollection whose features say in `kind` what they are.

Walls run along the axes. That keeps the board simple: a wall is a span of a line, the shared
wall of two rooms is one span, and a door is a span taken away.

Python 3 standard library only.
"""
import json
import math
from collections import defaultdict
from typing import NamedTuple

EARTH_RADIUS = 6371008.8  # metres, mean radius: the sphere on which the engine measures

# How firmly an obstacle stands in the way: what a `strength` of the file means here.
WALL, SCREEN, TRACK, RAILING, FURNITURE = 100, 80, 60, 40, 20

DOOR_WIDTHS = (1.0, 1.6)  # metres, narrowest and widest door

# A flight of stairs or escalators: its nodes stand STAND_OFF metres before the first and after
# the last step, and are joined to one hub APPROACH metres away, so that the way from the hub
# into an outer lane bends by less than STRAIGHT degrees and reads as "straight on".
STAND_OFF, APPROACH, STRAIGHT = 0.6, 6.5, 14.5

# A lift: half width and half depth of its shaft, width of its door, and how far its lobby
# stands beside its axis. Cabins of two levels lie on one spot, so that a ride has no direction
# and counts as heading north; people enter southwards. A step that runs exactly back along the
# one before is taken together with it, and the way in must stay a step of its own: hence aside.
SHAFT, LIFT_DOOR, LOBBY_ASIDE = (1.3, 1.5), 1.2, 0.4
# Waiting takes as long as 45 m of walking (half a minute), a metre up or down as long as 1.5 m.
LIFT_WAIT, LIFT_PACE = 45.0, 1.5
STOREY = 5.0  # metres from floor to floor

DIRECTIONS = {"north": (0, 1), "east": (1, 0), "south": (0, -1), "west": (-1, 0)}


class Rect(NamedTuple):
    """A rectangle along the axes, in metres."""
    west: float
    south: float
    east: float
    north: float

    def ring(self):
        return [(self.west, self.south), (self.east, self.south), (self.east, self.north),
                (self.west, self.north), (self.west, self.south)]

    def contains(self, point):
        return self.west <= point[0] <= self.east and self.south <= point[1] <= self.north

    def outward(self, point):
        """The direction that leads out of the rectangle at a point of its border."""
        x, y = point
        for name, on_side in (("north", y == self.north), ("south", y == self.south),
                              ("east", x == self.east), ("west", x == self.west)):
            if on_side:
                return DIRECTIONS[name]
        raise ValueError(f"{point} is not on the border of {self}")


class Frame:
    """Metres around an anchor on the sphere."""

    def __init__(self, latitude, longitude):
        self.latitude, self.longitude = latitude, longitude
        self.metres_north = math.radians(1) * EARTH_RADIUS
        self.metres_east = self.metres_north * math.cos(math.radians(latitude))

    def position(self, point):
        """[longitude, latitude] of a point, to about a millimetre."""
        return [round(self.longitude + point[0] / self.metres_east, 8),
                round(self.latitude + point[1] / self.metres_north, 8)]

    def metres(self, position):
        """The point of a [longitude, latitude]."""
        return ((position[0] - self.longitude) * self.metres_east,
                (position[1] - self.latitude) * self.metres_north)


def step(point, direction, length):
    """The point `length` metres from `point`; rounded, since points are keys of nodes."""
    return (round(point[0] + direction[0] * length, 3), round(point[1] + direction[1] * length, 3))


def without(spans, gaps):
    """The parts of the spans (from, to) that no gap covers, overlapping spans joined."""
    joined = []
    for start, end in sorted(spans):
        if joined and start <= joined[-1][1]:
            joined[-1][1] = max(end, joined[-1][1])
        else:
            joined.append([start, end])
    left = []
    for start, end in joined:
        for gap_start, gap_end in sorted(gaps):
            if gap_end <= start or gap_start >= end:
                continue
            if gap_start > start:
                left.append((start, gap_start))
            start = gap_end
        if start < end:
            left.append((start, end))
    return left


class Walls:
    """The walls of all levels, as spans of lines along the axes, with openings."""

    def __init__(self):
        # (level, axis along which the line runs: 0 = x, 1 = y, the other coordinate)
        self._spans = defaultdict(lambda: defaultdict(list))  # line -> strength -> spans
        self._gaps = defaultdict(list)  # line -> spans

    def add(self, level, points, strength):
        """A polyline along the axes."""
        for a, b in zip(points, points[1:]):
            axis = 0 if a[1] == b[1] else 1
            if a[1 - axis] != b[1 - axis]:
                raise ValueError(f"the wall {a} - {b} does not run along an axis")
            span = tuple(sorted((a[axis], b[axis])))
            self._spans[level, axis, a[1 - axis]][strength].append(span)

    def open(self, level, point, width):
        """Takes `width` metres around `point` out of the wall that runs through it."""
        found = False
        for axis in (0, 1):
            line = (level, axis, point[1 - axis])
            gap = (round(point[axis] - width / 2, 6), round(point[axis] + width / 2, 6))
            spans = [s for many in self._spans.get(line, {}).values() for s in many]
            if any(start <= gap[0] and gap[1] <= end for start, end in without(spans, [])):
                self._gaps[line].append(gap)
                found = True
        if not found:
            raise ValueError(f"no wall to open at {point} on level {level}")

    def pieces(self):
        """(level, strength, (a, b)) of what stands; where two run along each other, the firmer."""
        for line in sorted(self._spans):
            level, axis, across = line
            taken = list(self._gaps[line])
            for strength in sorted(self._spans[line], reverse=True):
                left = without(self._spans[line][strength], taken)
                taken += left
                for start, end in left:
                    ends = ((start, across), (end, across))
                    yield level, strength, ends if axis == 0 else tuple(p[::-1] for p in ends)


class FloorPlan:
    """The drawing board. Points are (x, y) in metres; nodes are named by level and point."""

    def __init__(self, frame, lowest_level):
        self._frame, self._lowest = frame, lowest_level
        self._walls = Walls()
        self._regions, self._nodes, self._edges = [], {}, []
        self._rooms, self._blocks, self._places = [], [], []

    # What is drawn, piece by piece.

    def region(self, level, rect, name):
        self._regions.append((level, rect, name))

    def node(self, level, point):
        """The node at a point, made when there is none yet; ids count from 1000 per level."""
        ids = self._nodes.setdefault(level, {})
        return ids.setdefault(point, (level - self._lowest + 1) * 1000 + len(ids))

    def link(self, start, end, **properties):
        """An edge between two (level, point); the properties are the file's own."""
        for level, point in (start, end):
            self.node(level, point)
        self._edges.append((start, end, properties))

    def path(self, level, *points, **properties):
        """Edges from point to point of one level."""
        for a, b in zip(points, points[1:]):
            self.link((level, a), (level, b), **properties)

    def row(self, level, y, *xs, **properties):
        self.path(level, *((x, y) for x in xs), **properties)

    def column(self, level, x, *ys, **properties):
        self.path(level, *((x, y) for y in ys), **properties)

    def wall(self, level, *points, strength=WALL):
        self._walls.add(level, points, strength)

    def opening(self, level, point, width):
        """An open passage through a wall, wider than a door."""
        self._walls.open(level, point, width)

    def door(self, level, point, width=1.2):
        """A gap in a wall with a node in it; returns the point."""
        if not DOOR_WIDTHS[0] <= width <= DOOR_WIDTHS[1]:
            raise ValueError(f"a door of {width} m at {point} on level {level}")
        self._walls.open(level, point, width)
        self.node(level, point)
        return point

    def area(self, level, rect, name, category):
        """Something to draw that nothing is closed off by: a hall, a square."""
        self._rooms.append((level, rect, name, category))

    def hall(self, level, rect, name, category):
        """An area with walls around it."""
        self.area(level, rect, name, category)
        self.wall(level, *rect.ring())

    def block(self, level, rect, name, category, strength=FURNITURE):
        """Something that stands in the way as a whole: a desk, a track."""
        self.area(level, rect, name, category)
        self._blocks.append((level, rect, strength))

    def place(self, level, point, name, category, entrance=None):
        """A named destination for people."""
        self._places.append((level, point, name, category, entrance))

    def room(self, level, rect, name, category, door, front, entry=None):
        """A room that is a place, with walls, a door (a point of its border) and a way in.

        The way starts at the corridor's node `front` metres before the door and ends 4 m
        behind it; `entry` has the properties of that last edge (steps, say).
        """
        self.hall(level, rect, name, category)
        out = rect.outward(door)
        inside, corridor = step(door, out, -4.0), step(door, out, front)
        self.door(level, door)
        self.path(level, corridor, door)
        self.path(level, door, inside, **(entry or {}))
        self.place(level, step(inside, out, -2.0), name, category)

    # What joins levels.

    def flight(self, lower, upper, rect, ascending, lanes):
        """Stairs and escalators side by side, from level `lower` up to `upper`.

        `rect` is the ground they cover and `ascending` the direction in which they go up;
        `lanes` maps a lane's offset in metres, to the right of someone going up, to its kind:
        "stairs", "escalator up" or "escalator down". Returns the hubs at the foot and the head.
        """
        up = DIRECTIONS[ascending]
        right = (up[1], -up[0])
        middle = ((rect.west + rect.east) / 2, (rect.south + rect.north) / 2)
        half = (rect.east - rect.west if up[0] else rect.north - rect.south) / 2
        foot, head = step(middle, up, -half), step(middle, up, half)
        foot_hub, head_hub = step(foot, up, -APPROACH), step(head, up, APPROACH)
        for offset, kind in lanes.items():
            bend = math.degrees(math.atan2(abs(offset), APPROACH - STAND_OFF))
            if bend > STRAIGHT:
                raise ValueError(f"a lane {offset} m aside bends by {bend:.1f} degrees")
            first = (lower, step(step(foot, up, -STAND_OFF), right, offset))
            last = (upper, step(step(head, up, STAND_OFF), right, offset))
            self.link((lower, foot_hub), first)
            self._climb(first, last, kind)
            self.link(last, (upper, head_hub))
        for level, open_end in ((lower, foot), (upper, head)):
            self.area(level, rect, None, "stairs" if level == lower else "void")
            self.wall(level, *rect.ring(), strength=RAILING)
            across = rect.north - rect.south if up[0] else rect.east - rect.west
            self.opening(level, open_end, across)
        return foot_hub, head_hub

    def _climb(self, first, last, kind):
        """The edges of one lane. Walking up stairs takes longer than walking down."""
        if kind == "stairs":
            stairs = {"oneway": True, "barrierFree": False, "type": "stairs"}
            self.link(first, last, multiplicator=1.8, **stairs)
            self.link(last, first, multiplicator=1.4, **stairs)
        else:
            ends = (first, last) if kind == "escalator up" else (last, first)
            self.link(*ends, oneway=True, multiplicator=1.3, barrierFree=False, type="escalator")

    def lift(self, levels, centre, lobby_distance, name):
        """A lift with its door to the north. Every ride, over however many levels, is one edge,
        so that a person is told once. Returns the point of the lobbies."""
        (x, y), (half_width, half_depth) = centre, SHAFT
        shaft = Rect(round(x - half_width, 3), y - half_depth, round(x + half_width, 3),
                     y + half_depth)
        lobby = (round(x + LOBBY_ASIDE, 3), y + lobby_distance)
        crossing = (round(x + LOBBY_ASIDE * half_depth / lobby_distance, 3), shaft.north)
        for level in levels:
            self.hall(level, shaft, name, "lift")
            self.opening(level, crossing, LIFT_DOOR)
            self.path(level, lobby, centre)
        for low in levels:
            for high in levels:
                if high > low:
                    rise = (high - low) * STOREY
                    self.link((low, centre), (high, centre), distance=rise, type="elevator",
                              multiplicator=round(LIFT_PACE + LIFT_WAIT / rise, 3))
        return lobby

    # The file.

    def collection(self, members):
        """The building as a FeatureCollection; `members` stand beside the features."""
        return {"type": "FeatureCollection", "formatVersion": 1, **members,
                "features": [*self._region_features(), *self._room_features(),
                             *self._obstacle_features(), *self._node_features(),
                             *self._edge_features(), *self._place_features()]}

    def _feature(self, kind, geometry, shape, **properties):
        position = self._frame.position
        coordinates = {"Point": lambda: position(shape),
                       "LineString": lambda: [position(p) for p in shape],
                       "Polygon": lambda: [[position(p) for p in shape]]}[geometry]()
        given = {key: value for key, value in properties.items() if value is not None}
        return {"type": "Feature", "properties": {"kind": kind, **given},
                "geometry": {"type": geometry, "coordinates": coordinates}}

    def _region_features(self):
        for level, rect, name in self._regions:
            yield self._feature("region", "Polygon", rect.ring(), level=level, name=name)

    def _room_features(self):
        for level, rect, name, category in sorted(self._rooms, key=lambda room: room[0]):
            yield self._feature("room", "Polygon", rect.ring(), level=level, name=name,
                                category=category)

    def _obstacle_features(self):
        """Without `region`: a wall on the border of two regions belongs to both."""
        for level, strength, ends in self._walls.pieces():
            yield self._feature("obstacle", "LineString", ends, level=level, strength=strength)
        for level, rect, strength in self._blocks:
            yield self._feature("obstacle", "Polygon", rect.ring(), level=level, strength=strength)

    def _node_features(self):
        for level in sorted(self._nodes):
            for point, node in self._nodes[level].items():
                region = next((name for at, rect, name in self._regions
                               if at == level and rect.contains(point)), None)
                yield self._feature("node", "Point", point, id=node, level=level, region=region)

    def _edge_features(self):
        for start, end, properties in self._edges:
            yield self._feature("edge", "LineString", (start[1], end[1]), **{
                "from": self.node(*start), "to": self.node(*end)}, **properties)

    def _place_features(self):
        for level, point, name, category, entrance in sorted(self._places, key=lambda p: p[0]):
            yield self._feature("place", "Point", point, name=name, level=level,
                                category=category, entrance=entrance)


def file_text(collection):
    """A FeatureCollection as text, one feature a line, so that versions compare well."""
    head = {key: value for key, value in collection.items() if key != "features"}
    dump = lambda value: json.dumps(value, ensure_ascii=False, separators=(",", ":"))
    lines = ",\n".join(dump(feature) for feature in collection["features"])
    return f'{dump(head)[:-1]},"features":[\n{lines}\n]}}\n'
