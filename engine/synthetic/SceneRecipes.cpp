#include "synthetic/SceneRecipes.h"

#include <QSize>
#include <QStringList>

namespace {

/// A scene drawn by one expression in X and Y from 0 to 352 and 0 to 288, into which each colour channel puts
/// its own values at %1, %2 and so on; the values are parted by "|".
struct Landscape
{
    const char* shape;
    const char* red;
    const char* green;
    const char* blue;
};

constexpr Landscape Landscapes[] = {
    // Hills.
    {"st(0,150+22*sin(X/31)+12*sin(X/13));st(1,190+20*sin(X/47+2));if(gt(Y,ld(1)),%1,if(gt(Y,ld(0)),%2,%3))",
     "60+(Y-150)/4|90|150+Y/3", "120+(Y-150)/5|130|180+Y/4", "50|110|240"},
    // A road.
    {"st(0,Y-96);st(1,abs(X-176));if(lt(ld(0),0),%1,if(lt(ld(1),ld(0)*0.04)*lt(mod(4000/(ld(0)+8),40),20)"
     "+lt(abs(ld(1)-ld(0)*0.85),ld(0)*0.03),235,if(lt(ld(1),ld(0)),%2,%3)))",
     "120+Y|78+ld(0)/8|70+ld(0)/5", "150+Y*0.8|80+ld(0)/8|110+ld(0)/5", "190+Y*0.5|86+ld(0)/8|60"},
    // A town at dusk.
    {"st(0,floor(X/22));st(1,sin(ld(0)*12.9)*43.7);st(2,230-130*abs(ld(1)-trunc(ld(1))));if(lt(Y,ld(2)),%1,"
     "if(lt(mod(X,22),2),%2,if(gt(mod(X,11),4)*gt(mod(Y,12),5)*gt(sin(ld(0)*7+floor(Y/12)*5),-0.2),%3,%4)))",
     "40+Y*0.6|30|240|62", "40+Y*0.3|32|215|66", "90+Y*0.2|40|140|82"},
    // A tiled square.
    {"st(0,Y-60);st(1,3000/(ld(0)+6));st(2,(X-176)*40/(ld(0)+6));"
     "if(lt(ld(0),0),%1,%2+mod(floor(ld(1)/3)+floor(ld(2)/12),2)*60+ld(0)/6)",
     "150+Y|90", "140+Y|84", "125+Y|76"},
    // A corridor.
    {"st(0,abs(X-176)/1.2);st(1,abs(Y-130));st(2,max(ld(0),ld(1))+1);if(lt(ld(2),22),%1,"
     "if(gt(ld(1),ld(0)),if(gt(Y,130),%2,%3),%4)*(0.35+ld(2)/230)*if(lt(mod(2400/ld(2),12),1.2),0.7,1))",
     "235|120|225|190", "240|112|228|196", "225|104|225|186"},
    // A car park from above.
    {"if(lt(mod(X,44),2)*gt(abs(mod(Y,144)-72),24),%1,if(lt(abs(mod(Y,144)-72),1.5)*lt(mod(X,24),12),%2,"
     "%3+12*sin(X/37)*sin(Y/29)))",
     "225|230|96", "225|200|99", "220|70|104"},
    // The sea.
    {"if(lt(hypot(X-230,Y-100),20),%1,if(lt(Y,120),%2,%3+60*gt(sin(Y*Y/190+X/9),0.7)))", "255|230-Y*0.3|20",
     "230|140+Y*0.4|70+(Y-120)*0.2", "150|110+Y*0.6|120+(Y-120)*0.2"},
    // Shelves.
    {"if(lt(mod(Y,56),5),%1,if(lt(mod(X,88),4),%2,if(gt(mod(Y,56),18+14*sin(floor(X/14)*3.7)),"
     "115+90*sin(floor(X/14)*%3+floor(Y/56)*%4),%5)))",
     "110|90|1.9|1|44", "86|80|2.7|2|42", "60|74|0.7|5|46"},
    // Soft colours.
    {"128+70*sin(hypot(X-%1,Y-%2)/%3)+50*sin((X+Y*%4)/37)", "300|40|47|1", "90|200|29|0", "260|60|41|-1"},
};

/// Other sources of FFmpeg. %1 is the scene's size, %2 half of it, %3 a quarter.
constexpr const char* TestPictures[] = {
    "testsrc2=s=%1,lutrgb=r='val*0.75':g='val*0.75':b='val*0.75'",
    "mandelbrot=s=%2:maxiter=200:start_scale=0.9:start_x=-0.55:start_y=0.55:inner=mincol,scale=%1",
    "life=s=%3:mold=20:ratio=0.3:seed=7:life_color=#e0f040:death_color=#204090:mold_color=#103050,"
    "select='eq(n,30)',scale=%1:flags=neighbor",
    "cellauto=s=%3:rule=30:seed=3:full=1,format=gray,scale=%1:flags=neighbor,format=rgb24,"
    "lutrgb=r='60+val*0.5':g='90+val*0.3':b='80+val*0.1'",
    "smptehdbars=s=%1",
    "colorspectrum=s=%2:type=all,scale=%1",
    "sierpinski=s=%1:type=carpet:seed=4,format=rgb24,lutrgb=r='50+val*0.6':g='60+val*0.4':b='90+val*0.3'",
};

static_assert(std::size(Landscapes) + std::size(TestPictures) == SceneRecipes::Count);

/// %1 is the sprite's size.
constexpr const char* Sprites[] = {
    "testsrc2=s=%1",
    "mandelbrot=s=%1:maxiter=150:start_scale=2:end_scale=0.2:end_pts=24",
    "life=s=%1:mold=10:ratio=0.4:seed=3:life_color=#ffe040:death_color=#c02040:mold_color=#401030",
    "gradients=s=%1:n=3:c0=#e04020:c1=#f0e060:c2=#3040c0:seed=2:speed=0.1",
    "testsrc=s=%1:r=4",
    "cellauto=s=%1:rule=110:seed=5:full=1,format=rgb24,lutrgb=g='val*0.8':b='255-val'",
    "nullsrc=s=%1,format=gbrp,geq=r='128+120*sin(X/9+N/3.82)':g='128+120*sin(Y/7-N/3.82)':b='200'",
};

QString text(QSize size)
{
    return QString("%1x%2").arg(size.width()).arg(size.height());
}

QString channel(const Landscape& landscape, const char* values, double scale)
{
    QString expression = landscape.shape;
    const QStringList parts = QString(values).split('|');
    for (int i = 0; i < parts.size(); ++i)
        expression.replace('%' + QString::number(i + 1), '(' + parts.at(i) + ')');
    return expression.replace('X', QString("(X/%1)").arg(scale)).replace('Y', QString("(Y/%1)").arg(scale));
}

/// The expressions are slow: they draw at half the size.
QString draw(const Landscape& landscape, QSize size)
{
    const double scale = size.width() / 2 / 352.0;
    const QString graph("nullsrc=s=%1,format=gbrp,geq=r='%2':g='%3':b='%4',scale=%5");
    return graph.arg(text(size / 2), channel(landscape, landscape.red, scale),
                     channel(landscape, landscape.green, scale), channel(landscape, landscape.blue, scale),
                     text(size));
}

} // namespace

QString SceneRecipes::backdrop(int number, QSize size)
{
    const int landscapes = int(std::size(Landscapes));
    if (number < landscapes)
        return draw(Landscapes[number], size);
    QString graph = TestPictures[number - landscapes];
    return graph.replace("%1", text(size)).replace("%2", text(size / 2)).replace("%3", text(size / 4));
}

QString SceneRecipes::sprite(int number, QSize size)
{
    const QString graph = QString(Sprites[size_t(number) % std::size(Sprites)]).replace("%1", text(size));
    return graph + ",drawbox=color=white:t=2";
}
