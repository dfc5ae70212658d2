"""How long lines, arcs and helices are."""

import math


def distance(start, end):
    return math.hypot(*(float(b - a) for a, b in zip(start, end)))


# Nodes and weights of a Gauss-Legendre quadrature of ten points on -1 to 1.
GAUSS = [
    (0.14887433898163122, 0.29552422471475287),
    (0.43339539412924719, 0.26926671930999635),
    (0.67940956829902441, 0.21908636251598204),
    (0.86506336668898451, 0.14945134915058059),
    (0.97390652851717172, 0.06667134430868814),
]


def spiral_length(first, last, sweep, rise):
    """Of an arc whose radius and height go evenly with the angle: by quadrature in 64 parts."""
    if first == last:
        return math.hypot(first * sweep, rise)
    parts = 64
    terms = []
    for part in range(parts):
        for node, weight in GAUSS:
            for sign in (-1, 1):
                t = (part + 0.5 + sign * node / 2) / parts
                radius = first + (last - first) * t
                terms.append(weight / 2 / parts * math.hypot(radius * sweep, last - first, rise))
    return math.fsum(terms)


def turn(start, end, centre, u, v, turns_left):
    """The signed angle of an arc; one that ends where it starts is a full circle."""
    if start[u] == end[u] and start[v] == end[v]:
        return 2 * math.pi if turns_left else -2 * math.pi
    a = [float(start[u] - centre[0]), float(start[v] - centre[1])]
    b = [float(end[u] - centre[0]), float(end[v] - centre[1])]
    angle = math.atan2(a[0] * b[1] - a[1] * b[0], a[0] * b[0] + a[1] * b[1])
    if turns_left:
        return angle if angle > 0 else angle + 2 * math.pi
    return angle if angle < 0 else angle - 2 * math.pi
