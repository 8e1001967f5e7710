"""What must hold for a demo building: the checks behind make_terminal.py.

They read the finished FeatureCollection, as any tool would, and measure it in metres again; so
they also find what the drawing board got wrong. Each check yields sentences about what it
found; none means that all is well.

Python 3 standard library only.
"""
import math
from collections import Counter, defaultdict

from floorplan import Frame

CLEARANCE = 0.3  # metres between an edge of one level and any wall; touching counts as crossing
EDGE_LENGTHS = (2.9, 15.5)  # metres on one level: an edge counts as √(length² + 3²) metres, so
#                             many short ones would make a straight corridor seem long
REGION_MARGIN = 1.0  # metres from every node to the border of its region
SIGHT = 12.0  # metres within which a place must see a node
VERTICAL = ("stairs", "escalator", "elevator")  # the types of edges that change the level


def side(a, b, p):
    return (b[0] - a[0]) * (p[1] - a[1]) - (b[1] - a[1]) * (p[0] - a[0])


def crosses(p, q, a, b):
    """Whether the segments p-q and a-b properly cross."""
    return (side(a, b, p) * side(a, b, q) < 0) and (side(p, q, a) * side(p, q, b) < 0)


def from_segment(p, a, b):
    """Distance from p to the segment a-b."""
    x, y = b[0] - a[0], b[1] - a[1]
    along = (p[0] - a[0]) * x + (p[1] - a[1]) * y
    t = max(0.0, min(1.0, along / (x * x + y * y))) if a != b else 0.0
    return math.dist(p, (a[0] + t * x, a[1] + t * y))


def apart(p, q, a, b):
    """Distance between the segments p-q and a-b; 0 when they meet."""
    if crosses(p, q, a, b):
        return 0.0
    return min(from_segment(p, a, b), from_segment(q, a, b),
               from_segment(a, p, q), from_segment(b, p, q))


def reached(start, ways):
    """Every node that can be reached from one, over node -> set of next nodes."""
    seen, stack = {start}, [start]
    while stack:
        for node in ways[stack.pop()] - seen:
            seen.add(node)
            stack.append(node)
    return seen


class Building:
    """A FeatureCollection, sorted by kind and measured in metres."""

    def __init__(self, collection):
        of_kind = defaultdict(list)
        for feature in collection["features"]:
            of_kind[feature["properties"]["kind"]].append(
                (feature["properties"], feature["geometry"]["coordinates"]))
        anchor = of_kind["node"][0][1]
        metres = Frame(anchor[1], anchor[0]).metres
        self.ids = [p["id"] for p, _ in of_kind["node"]]
        self.level = {p["id"]: p["level"] for p, _ in of_kind["node"]}
        self.region_of = {p["id"]: p["region"] for p, _ in of_kind["node"] if "region" in p}
        self.at = {p["id"]: metres(c) for p, c in of_kind["node"]}
        self.edges = [p for p, _ in of_kind["edge"]]
        self.places = [(p, metres(c)) for p, c in of_kind["place"]]
        self.regions = [(p["level"], p["name"], [metres(c) for c in rings[0]])
                        for p, rings in of_kind["region"]]
        self.walls = defaultdict(list)
        for p, shape in of_kind["obstacle"]:
            lines = [shape] if isinstance(shape[0][0], float) else shape
            for line in ([metres(c) for c in line] for line in lines):
                self.walls[p["level"]] += zip(line, line[1:])

    def flat_edges(self):
        """(edge, level, from point, to point) of the edges that stay on their level."""
        for edge in self.edges:
            a, b = edge["from"], edge["to"]
            if self.level[a] == self.level[b]:
                yield edge, self.level[a], self.at[a], self.at[b]

    def ways(self, barrier_free=False, closed=frozenset()):
        """node -> set of nodes one can go to next; not through the closed nodes."""
        ways = defaultdict(set)
        for edge in self.edges:
            ends = (edge["from"], edge["to"])
            if closed.intersection(ends) or barrier_free and not edge.get("barrierFree", True):
                continue
            ways[ends[0]].add(ends[1])
            if not edge.get("oneway"):
                ways[ends[1]].add(ends[0])
        return ways

    def region_at(self, level, point):
        """The first region of a level that contains a point, as the engine chooses it."""
        for at, name, ring in self.regions:
            xs, ys = zip(*ring)
            if at == level and min(xs) <= point[0] <= max(xs) and min(ys) <= point[1] <= max(ys):
                return name
        return None

    def node_seen_from(self, level, point):
        """The nearest node of the point's region with no wall between; (distance, id) or None."""
        region = self.region_at(level, point)
        near = sorted((math.dist(point, self.at[node]), node) for node in self.ids
                      if self.region_of.get(node) == region)
        return next(((d, node) for d, node in near if d <= SIGHT and not any(
            apart(point, self.at[node], *wall) == 0 for wall in self.walls[level])), None)


def name_of(place):
    return f"{place['name']!r} on level {place['level']}"


def check_ids(building):
    for node, count in Counter(building.ids).items():
        if count > 1:
            yield f"node {node} stands {count} times"
    pairs = Counter()
    for edge in building.edges:
        ends = (edge["from"], edge["to"])
        if any(end not in building.level for end in ends) or ends[0] == ends[1]:
            yield f"edge {ends}: not two different nodes of the file"
        pairs[ends] += 1
        pairs[ends[::-1]] += not edge.get("oneway")
    for ends, count in pairs.items():
        if count > 1:
            yield f"{count} edges lead from {ends[0]} to {ends[1]}; only the last would count"


def check_size(building, least):
    """`least` maps levels, nodes, places and entrances to the number wanted."""
    entrances = [p for p, _ in building.places if p.get("entrance")]
    found = {"levels": len(set(building.level.values())), "nodes": len(building.ids),
             "places": len(building.places), "entrances": len(entrances)}
    for what, count in least.items():
        if found[what] < count:
            yield f"{found[what]} {what}, wanted are at least {count}"
    if min(building.level.values()) >= 0:
        yield "no level below ground"
    if max(Counter(level for level, _, _ in building.regions).values()) < 2:
        yield "no level has two regions"
    names = Counter(p["name"] for p, _ in building.places)
    if not any(count > 1 for count in names.values()):
        yield "no name is that of places on several levels"


def check_regions(building):
    rings = {name: ring for _, name, ring in building.regions}
    for node, (x, y) in building.at.items():
        region = building.region_of.get(node)
        if region is None:
            yield f"node {node} is in no region of its level"
            continue
        xs, ys = zip(*rings[region])
        if min(x - min(xs), max(xs) - x, y - min(ys), max(ys) - y) < REGION_MARGIN:
            yield f"node {node} is less than {REGION_MARGIN} m from the border of {region!r}"


def check_walls(building):
    for edge, level, a, b in building.flat_edges():
        nearest = min((apart(a, b, *wall) for wall in building.walls[level]), default=math.inf)
        if nearest < CLEARANCE:
            yield (f"edge {edge['from']}-{edge['to']} on level {level} comes within "
                   f"{nearest:.2f} m of a wall")


def check_edges(building):
    """Lengths, and that edges of one level meet at nodes only."""
    flat = list(building.flat_edges())
    for index, (edge, level, a, b) in enumerate(flat):
        name = f"edge {edge['from']}-{edge['to']}"
        if not EDGE_LENGTHS[0] <= math.dist(a, b) <= EDGE_LENGTHS[1]:
            yield f"{name} is {math.dist(a, b):.1f} m long"
        for node in building.ids:
            if (building.level[node] == level and node not in (edge["from"], edge["to"])
                    and from_segment(building.at[node], a, b) < 0.5):
                yield f"{name} passes node {node} without meeting it"
        for other, other_level, c, d in flat[:index]:
            if other_level == level and crosses(a, b, c, d):
                yield f"{name} crosses edge {other['from']}-{other['to']} outside a node"


def check_level_changes(building):
    for edge in building.edges:
        kind, free = edge.get("type"), edge.get("barrierFree", True)
        name = f"edge {edge['from']}-{edge['to']} ({kind})"
        if building.level[edge["from"]] == building.level[edge["to"]]:
            if kind in VERTICAL:
                yield f"{name} stays on its level"
            continue
        if kind not in VERTICAL:
            yield f"{name} changes the level, but its type does not say how"
        if free != (kind == "elevator"):
            yield f"{name}: barrierFree is {free}"
        if kind == "escalator" and not edge.get("oneway"):
            yield f"{name} runs in both directions"
        if edge.get("multiplicator", 1.0) <= 1.0:
            yield f"{name} costs no more than walking"
    rides = defaultdict(set)
    for edge in building.edges:
        if edge.get("type") == "elevator":
            rides[edge["from"]].add(edge["to"])
            rides[edge["to"]].add(edge["from"])
    levels = set(building.level.values())
    shafts = {frozenset(reached(cabin, rides)) for cabin in list(rides)}
    if sum({building.level[cabin] for cabin in shaft} == levels for shaft in shafts) < 2:
        yield "fewer than two lifts join all levels"
    if not any(edge.get("type") == "ramp" for edge in building.edges):
        yield "no ramp"


def check_places(building):
    names = Counter(name_of(place) for place, _ in building.places)
    for name, count in names.items():
        if count > 1:
            yield f"{count} places are called {name}: people could not tell them apart"
    for place, point in building.places:
        if building.node_seen_from(place["level"], point) is None:
            yield f"place {name_of(place)} sees no node of its region within {SIGHT} m"


def check_connections(building, with_steps_only):
    """Every node from every other; step-free, every place from every other but those in
    `with_steps_only`, a set of (name, level), which must not be reached step-free at all."""
    def two_way(start, **which):
        ways, back = building.ways(**which), defaultdict(set)
        for node, following in list(ways.items()):
            for other in following:
                back[other].add(node)
        return reached(start, ways) & reached(start, back)

    start = building.ids[0]
    for node in sorted(set(building.ids) - two_way(start)):
        yield f"node {node} is not connected both ways"
    free = two_way(start, barrier_free=True)
    for place, point in building.places:
        seen = building.node_seen_from(place["level"], point)
        exempt = (place["name"], place["level"]) in with_steps_only
        if seen is not None and (seen[1] in free) == exempt:
            yield f"place {name_of(place)} is{'' if exempt else ' not'} reached step-free"


def check_security(building, checkpoint, gate_prefix):
    """Nobody comes from an entrance to a gate except through the checkpoint, nor back through
    it: from behind it, the way out is another."""
    nodes, gates, entrances = {}, set(), set()
    for place, point in building.places:
        seen = building.node_seen_from(place["level"], point)
        if seen is None:
            return  # check_places says so
        nodes[place["name"]] = seen[1]
        if place["name"].startswith(gate_prefix):
            gates.add(seen[1])
        if place.get("entrance"):
            entrances.add(seen[1])
    if checkpoint not in nodes or not gates:
        yield f"no place {checkpoint!r}, or no gates"
        return
    around = building.ways(closed={nodes[checkpoint]})
    for entrance in entrances:
        if gates & reached(entrance, around):
            yield f"node {entrance}: from this entrance a gate is reached around {checkpoint!r}"
    for gate in gates:
        if not entrances <= reached(gate, around):
            yield f"node {gate}: from this gate the way out leads through {checkpoint!r}"


def problems(collection, least, with_steps_only, checkpoint, gate_prefix):
    """All that is wrong with a building, as a list of sentences."""
    building = Building(collection)
    found = list(check_ids(building))
    if found:
        return found  # the others rely on ids
    for check in (check_regions, check_walls, check_edges, check_level_changes, check_places):
        found += check(building)
    found += check_size(building, least)
    found += check_connections(building, with_steps_only)
    found += check_security(building, checkpoint, gate_prefix)
    return found
