package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertFalse;
import static org.junit.jupiter.api.Assertions.assertNotEquals;
import static org.junit.jupiter.api.Assertions.assertNull;
import static org.junit.jupiter.api.Assertions.assertSame;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.nio.file.Path;
import java.util.HashSet;
import java.util.Set;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** A project and its run through the proxies: long hierarchies, lists of shared objects, lookups, and the frame loop. */
class RunTest {
    private static final int VISITORS = 5;

    @TempDir
    Path directory;

    /** Passes four texts, none longer than a string object holds in itself. */
    static void drawHall(Project project) {
        Vec2d[] outline = {new Vec2d(0, 0), new Vec2d(20, 0), new Vec2d(20, 10), new Vec2d(0, 10)};
        project.createFloor("Hall", MeshGeometry.createFlatPolygon(0, outline));
        Portal west = project.createPortal("West",
                MeshGeometry.createVerticalRectangle(new Vec3d(0, 0, 4), new Vec3d(0, 2, 6)));
        Portal east = project.createPortal("East",
                MeshGeometry.createVerticalRectangle(new Vec3d(20, 0, 4), new Vec3d(20, 2, 6)));
        GlobalId[] origins = {west.getId()};
        GlobalId[] destinations = {east.getId()};
        project.createJourney("Visitors").setPopulationSource(new CountPopulationSource(origins, destinations, VISITORS));
    }

    @Test
    void anObjectIsReachedAsEachOfItsClasses() {
        try (Project project = Project.create(); Scope scope = new Scope()) {
            drawHall(project);
            Floor hall = project.getFloor("Hall");
            SimObject object = hall;
            assertEquals("Hall", object.getName());
            object.setName("Great hall");
            assertEquals("Great hall", project.getFloor(hall.getId()).getName());
            assertEquals(object.getTypeId(), hall.getTypeId());
            hall.delete();
            assertThrows(IllegalStateException.class, object::getName);
            assertTrue(project.hasObject("Great hall"), "releasing the handle does not delete the object");
        }
    }

    @Test
    void lookupsFindTheObjectOrNothing() {
        try (Project project = Project.create(); Scope scope = new Scope()) {
            drawHall(project);
            assertNull(project.getFloor("Attic"));
            assertNull(project.getFloor(GlobalId.generate()));
            Portal[] portals = project.getPortals();
            assertEquals(2, portals.length);
            for (Portal portal : portals) assertEquals(portal.getId(), project.getPortal(portal.getName()).getId());
            project.removeAndDeleteObject(project.getJourney("Visitors"));
            project.removeAndDeleteObject(portals[0]);
            assertEquals(1, project.getPortals().length);
            AgentInitialPlacement placement = AgentInitialPlacement.CENTER;
            portals[1].setAgentInitialPlacement(placement);
            assertSame(placement, project.getPortal(portals[1].getId()).getAgentInitialPlacement());
        }
    }

    @Test
    void closingAProjectIsTheSdksCloseAndTheRelease() {
        Project project = Project.create();
        drawHall(project);
        Floor hall = project.getFloor("Hall");
        project.close();
        assertThrows(IllegalStateException.class, project::getFloors);
        project.close();
        assertThrows(Exception.class, () -> hall.setName("Attic"), "the project is closed for its objects too");
    }

    @Test
    void agentsAreReadFrameByFrame() {
        Set<Integer> seen = new HashSet<>();
        try (Project project = Project.create()) {
            drawHall(project);
            try (Simulation simulation = Simulation.create(project, "Run", directory.resolve("run.pfdb").toString())) {
                Agent kept = null;
                while (!simulation.isDone()) {
                    try (Scope frame = new Scope()) {
                        simulation.step();
                        Agent[] agents = simulation.getAllAgents();
                        for (Agent agent : agents) {
                            Vec3d position = agent.getPosition();
                            assertTrue(position.getX() > -1 && position.getX() < 21, position::toString);
                            seen.add(agent.getId());
                            assertEquals(agent, simulation.getAgent(agent.getId()));
                        }
                        if (agents.length > 1) {
                            assertNotEquals(agents[0], agents[1]);
                            assertNotEquals(0, agents[0].compareTo(agents[1]));
                        }
                        if (kept == null && agents.length > 0) kept = frame.keep(agents[0]);
                    }
                }
                assertFalse(kept.exists());
                kept.close();
            }
        }
        assertEquals(VISITORS, seen.size());
    }
}
