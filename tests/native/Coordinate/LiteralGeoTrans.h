#pragma once

#include <cmath>
#include <cstddef>

#include <pelta/Coordinate/GeoTrans.h>

namespace literal {

/// The conversion written down formula by formula as its sources state it, with no thought of speed: what the
/// library's own evaluation is held against.
class GeoTrans {
 public:
    using Point = pelta::GeoPoint;

    static Point convert(std::size_t source, std::size_t destination, Point in) {
        Point place;
        if (source == 0) {
            place = {in.x * pi / 180, in.y * pi / 180, 0};
        } else {
            toGeographic(source, in, place);
        }
        if (destination == 0) {
            return {place.x * 180 / pi, place.y * 180 / pi, 0};
        }
        Point result;
        toGrid(destination, place, result);
        return result;
    }

 private:
    using T = pelta::GeoTrans;
    static constexpr double pi = 3.141592653589793;

    static double es(std::size_t i) { return 1 - std::pow(T::m_arMinor[i] / T::m_arMajor[i], 2); }
    static double esp(std::size_t i) { return es(i) / (1 - es(i)); }
    static double e0(double e) { return 1 - 0.25 * e * (1 + e / 16 * (3 + 1.25 * e)); }
    static double e1(double e) { return 0.375 * e * (1 + 0.25 * e * (1 + 0.46875 * e)); }
    static double e2(double e) { return 0.05859375 * e * e * (1 + 0.75 * e); }
    static double e3(double e) { return e * e * e * (35.0 / 3072); }
    static double mlfn(double e, double phi) {
        return e0(e) * phi - e1(e) * std::sin(2 * phi) + e2(e) * std::sin(4 * phi) -
               e3(e) * std::sin(6 * phi);
    }
    static bool isShifted(std::size_t i) { return i == 1 || i == 2; }

    static void toGrid(std::size_t i, Point& in, Point& out) {
        if (isShifted(i)) {
            toGeocentric(0, in);
            shift(in, -1);
            toGeodetic(i, in);
        }
        const double a = T::m_arMajor[i];
        const double k0 = T::m_arScaleFactor[i];
        const double dl = in.x - T::m_arLonCenter[i];
        const double s = std::sin(in.y);
        const double c = std::cos(in.y);
        const double al = c * dl;
        const double als = al * al;
        const double C = esp(i) * c * c;
        const double tq = std::tan(in.y);
        const double t = tq * tq;
        const double n = a / std::sqrt(1 - es(i) * s * s);
        out.x = T::m_arFalseEasting[i] +
                k0 * n * al *
                    (1 + als / 6 * (1 - t + C + als / 20 * (5 - 18 * t + t * t + 72 * C - 58 * esp(i))));
        const double ml = a * mlfn(es(i), in.y);
        const double origin = a * mlfn(es(i), T::m_arLatCenter[i]);
        out.y = T::m_arFalseNorthing[i] +
                k0 * (ml - origin +
                      n * tq * als *
                          (0.5 + als / 24 *
                                     (5 - t + 9 * C + 4 * C * C +
                                      als / 30 * (61 - 58 * t + t * t + 600 * C - 330 * esp(i)))));
    }

    static void toGeographic(std::size_t i, const Point& in, Point& out) {
        const double a = T::m_arMajor[i];
        const double k0 = T::m_arScaleFactor[i];
        const double e = es(i);
        const double x = in.x - T::m_arFalseEasting[i];
        const double y = in.y - T::m_arFalseNorthing[i];
        const double con = (y / k0 + a * mlfn(e, T::m_arLatCenter[i])) / a;
        double phi = con;
        for (int pass = 0;; ++pass) {
            const double delta =
                (con + e1(e) * std::sin(2 * phi) - e2(e) * std::sin(4 * phi) + e3(e) * std::sin(6 * phi)) /
                    e0(e) -
                phi;
            phi += delta;
            if (std::abs(delta) <= 1e-10 || pass >= 6) {
                break;
            }
        }
        if (std::abs(phi) < pi / 2) {
            unproject(i, phi, x, out);
        } else {
            out.y = pi / 2 * std::sin(y);
            out.x = T::m_arLonCenter[i];
        }
        if (isShifted(i)) {
            toGeocentric(i, out);
            shift(out, 1);
            toGeodetic(0, out);
        }
    }

    static void unproject(std::size_t i, double phi, double x, Point& out) {
        const double s = std::sin(phi);
        const double c = std::cos(phi);
        const double t = std::tan(phi);
        const double C = esp(i) * c * c;
        const double CS = C * C;
        const double TT = t * t;
        const double TS = TT * TT;
        const double con = 1 - es(i) * s * s;
        const double n = T::m_arMajor[i] / std::sqrt(con);
        const double r = n * (1 - es(i)) / con;
        const double d = x / (n * T::m_arScaleFactor[i]);
        const double ds = d * d;
        out.y = phi - n * t * ds / r *
                          (0.5 - ds / 24 *
                                     (5 + 3 * TT + 10 * C - 4 * CS - 9 * esp(i) -
                                      ds / 30 * (61 + 90 * TT + 298 * C + 45 * TS - 252 * esp(i) - 3 * CS)));
        out.x =
            T::m_arLonCenter[i] +
            d *
                (1 - ds / 6 *
                         (1 + 2 * TT + C - ds / 20 * (5 - 2 * C + 28 * TT - 3 * CS + 8 * esp(i) + 24 * TS))) /
                c;
    }

    static void shift(Point& p, double sign) {
        p.x += sign * T::datum_params[0];
        p.y += sign * T::datum_params[1];
        p.z += sign * T::datum_params[2];
    }

    static void toGeocentric(std::size_t i, Point& p) {
        double lat = p.y;
        if (lat < -pi / 2 && lat > -1.001 * pi / 2) {
            lat = -pi / 2;
        } else if (lat > pi / 2 && lat < 1.001 * pi / 2) {
            lat = pi / 2;
        } else if (lat < -pi / 2 || lat > pi / 2) {
            return;
        }
        const double lon = p.x > pi ? p.x - 2 * pi : p.x;
        const double s = std::sin(lat);
        const double rn = T::m_arMajor[i] / std::sqrt(1 - es(i) * s * s);
        const double h = p.z;
        p = {(rn + h) * std::cos(lat) * std::cos(lon), (rn + h) * std::cos(lat) * std::sin(lon),
             (rn * (1 - es(i)) + h) * s};
    }

    static void toGeodetic(std::size_t i, Point& p) {
        bool atPole = false;
        double lon = 0;
        double lat = 0;
        if (p.x != 0) {
            lon = std::atan2(p.y, p.x);
        } else if (p.y > 0) {
            lon = pi / 2;
        } else if (p.y < 0) {
            lon = -pi / 2;
        } else {
            atPole = true;
            if (p.z == 0) {
                return;
            }
            lat = p.z > 0 ? pi / 2 : -pi / 2;
        }
        const double a = T::m_arMajor[i];
        const double w = std::sqrt(p.x * p.x + p.y * p.y);
        const double t0 = p.z * 1.0026;
        const double s0 = std::sqrt(t0 * t0 + w * w);
        const double t1 = p.z + T::m_arMinor[i] * esp(i) * std::pow(t0 / s0, 3);
        const double sum = w - a * es(i) * std::pow(w / s0, 3);
        const double s1 = std::sqrt(t1 * t1 + sum * sum);
        const double sinp1 = t1 / s1;
        const double cosp1 = sum / s1;
        const double rn = a / std::sqrt(1 - es(i) * sinp1 * sinp1);
        double h = p.z / sinp1 + rn * (es(i) - 1);
        if (cosp1 >= T::COS_67P5) {
            h = w / cosp1 - rn;
        } else if (cosp1 <= -T::COS_67P5) {
            h = w / -cosp1 - rn;
        }
        p = {lon, atPole ? lat : std::atan(sinp1 / cosp1), h};
    }
};

}  // namespace literal
